#include "clipboard/undo_manager.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

// An operation that counts: performing adds one, undoing takes it away, and each registers the other.
class UndoManagerTest : public ::testing::Test {
 protected:
  void perform() {
    ++value_;
    manager_.registerUndo(u"Count", [this] { unperform(); });
  }
  void unperform() {
    --value_;
    manager_.registerUndo(u"Count", [this] { perform(); });
  }

  bool holdsNothing() {
    return !manager_.canUndo() && !manager_.canRedo() && manager_.undoActionName().empty() &&
           manager_.redoActionName().empty() && !manager_.undo() && !manager_.redo();
  }

  UndoManager manager_;
  int value_ = 0;
};

TEST_F(UndoManagerTest, HoldsNothingAtFirst) {
  EXPECT_TRUE(holdsNothing());
}

TEST_F(UndoManagerTest, UndoAndRedoAlternateWithoutEnd) {
  perform();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(manager_.canUndo());
    EXPECT_FALSE(manager_.canRedo());
    EXPECT_TRUE(manager_.undoActionName() == u"Count");
    EXPECT_TRUE(manager_.redoActionName().empty());
    EXPECT_FALSE(manager_.redo());
    EXPECT_TRUE(manager_.undo());
    EXPECT_EQ(value_, 0);
    EXPECT_FALSE(manager_.canUndo());
    EXPECT_TRUE(manager_.canRedo());
    EXPECT_TRUE(manager_.undoActionName().empty());
    EXPECT_TRUE(manager_.redoActionName() == u"Count");
    EXPECT_FALSE(manager_.undo());
    EXPECT_TRUE(manager_.redo());
    EXPECT_EQ(value_, 1);
  }
}

TEST_F(UndoManagerTest, HoldsTheLastActionOnly) {
  perform();
  perform();
  EXPECT_TRUE(manager_.undo());
  EXPECT_FALSE(manager_.undo());
  EXPECT_EQ(value_, 1);
  perform();
  EXPECT_FALSE(manager_.redo()) << "an action after an undo takes the place of the redo";
  EXPECT_TRUE(manager_.canUndo());
}

TEST_F(UndoManagerTest, CanForgetAll) {
  perform();
  manager_.removeAllActions();
  EXPECT_TRUE(holdsNothing());
  perform();
  manager_.undo();
  manager_.removeAllActions();
  EXPECT_TRUE(holdsNothing());
}

TEST_F(UndoManagerTest, AnActionThatRegistersNothingLeavesNothing) {
  manager_.registerUndo(u"Once", [this] { value_ = 7; });
  EXPECT_TRUE(manager_.undo());
  EXPECT_EQ(value_, 7);
  EXPECT_TRUE(holdsNothing());
  perform();
  EXPECT_TRUE(manager_.canUndo()) << "what is registered later is an undo again";
}

}  // namespace
}  // namespace quillet
