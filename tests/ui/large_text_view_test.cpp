#include "ui/large_text_view.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <gtest/gtest.h>
#include <memory>

#include "support/qt_application.h"
#include "ui/theme.h"

namespace quillet::ui {
namespace {

class LargeTextViewTest : public ::testing::Test {
 protected:
  LargeTextViewTest() {
    testing::qtApplication();
    view_ = std::make_unique<LargeTextView>();
    view_->setFont(fixedWidthFont());
    view_->resize(600, 300);
    view_->show();
    QApplication::processEvents();
  }
  void press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(view_.get(), &event);
  }
  void mouse(QEvent::Type type, const QPointF& point, Qt::KeyboardModifiers modifiers = {}) {
    QMouseEvent event(type, point, view_->viewport()->mapToGlobal(point), Qt::LeftButton, Qt::LeftButton,
                      modifiers);
    QApplication::sendEvent(view_->viewport(), &event);
  }
  void drag(const QPointF& from, const QPointF& to) {
    mouse(QEvent::MouseButtonPress, from);
    mouse(QEvent::MouseMove, to);
  }

  std::unique_ptr<LargeTextView> view_;
};

constexpr auto kShift = Qt::ShiftModifier;
constexpr auto kControl = Qt::ControlModifier;

TEST_F(LargeTextViewTest, KeysMoveACaretAndShiftSelects) {
  struct Key {
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* selected;  // after it
  };
  const Key keys[] = {{Qt::Key_Right, {}, ""},
                      {Qt::Key_Right, kShift, "n"},
                      {Qt::Key_End, kShift, "ne two"},
                      {Qt::Key_Down, kShift, "ne two\nthree"},
                      {Qt::Key_Home, kShift, "ne two\n"},
                      {Qt::Key_Home, kControl | kShift, "o"},
                      {Qt::Key_Home, kControl, ""},
                      {Qt::Key_Right, kControl | kShift, "one"},
                      {Qt::Key_End, kControl | kShift, "one two\nthree\nfour"},
                      {Qt::Key_Left, kShift, "one two\nthree\nfou"},
                      {Qt::Key_Up, kShift, "one two\nthr"},
                      {Qt::Key_PageDown, kShift, "one two\nthree\nfou"},
                      {Qt::Key_PageUp, kShift, "one"},
                      {Qt::Key_A, kControl, "one two\nthree\nfour"},
                      {Qt::Key_Left, {}, ""}};
  view_->setText(QStringLiteral("one two\nthree\nfour"));
  for (const Key& one : keys) {
    press(one.key, one.modifiers);
    EXPECT_EQ(view_->selectedText(), QLatin1String(one.selected)) << one.key;
  }
}

TEST_F(LargeTextViewTest, TheCaretIsBroughtIntoSight) {
  QString text;
  for (int line = 0; line < 1'000; ++line) text += QString::number(line) + QLatin1Char('\n');
  view_->setText(text + QString(5'000, QChar(0x6F22)) + QStringLiteral("end"));
  press(Qt::Key_End, kControl);
  EXPECT_TRUE(view_->textInSight().endsWith(QStringLiteral("end")));
  press(Qt::Key_Home, kControl);
  EXPECT_TRUE(view_->textInSight().startsWith(QStringLiteral("0\n1\n")));
}

// A layout ends a line at each of these.
TEST_F(LargeTextViewTest, WhatFollowsALineSeparatorIsInSight) {
  for (const char16_t separator : {u'\u2028', u'\u2029', u'\u0085', u'\r', u'\0'}) {
    const QString text = QStringLiteral("abc") + QChar(separator) + QStringLiteral("def");
    view_->setText(text);
    drag({0, 10}, {580, 10});
    EXPECT_EQ(view_->selectedText(), text) << static_cast<int>(separator);
    view_->copy();
    EXPECT_EQ(QApplication::clipboard()->text(), text);
  }
}

// What is read first stands at the right; none of it may lie beyond the edge.
TEST_F(LargeTextViewTest, TheBeginningOfALongLineFromRightToLeftIsInSight) {
  view_->setText(QString(2'000, QChar(0x05D0)));
  drag({0, 10}, {597, 10});
  const qsizetype selected = view_->selectedText().size();
  EXPECT_GT(selected, 10);
  press(Qt::Key_Home, kControl);
  mouse(QEvent::MouseButtonPress, {0, 10}, kShift);
  EXPECT_EQ(view_->selectedText().size(), selected) << "from the first unit to the left edge";
}

TEST_F(LargeTextViewTest, EveryUnitOfAWideLineCanBeScrolledTo) {
  const QString line = QString(300, QChar(0x6F22)) + QStringLiteral("end");
  view_->setText(line);
  QScrollBar* bar = view_->horizontalScrollBar();
  bar->setValue(bar->maximum());
  EXPECT_EQ(view_->textInSight(), QStringLiteral("d"));
  view_->setText(QStringLiteral("short"));
  EXPECT_EQ(bar->maximum(), 0);
}

TEST_F(LargeTextViewTest, ADoubleClickSelectsAWordAndATripleClickALine) {
  view_->setText(QStringLiteral("alpha beta\ngamma"));
  const QPointF inBeta(6 + view_->fontMetrics().horizontalAdvance(QStringLiteral("alpha b")), 12);
  mouse(QEvent::MouseButtonPress, inBeta);
  mouse(QEvent::MouseButtonDblClick, inBeta);
  EXPECT_EQ(view_->selectedText(), QStringLiteral("beta"));
  mouse(QEvent::MouseButtonPress, inBeta);
  EXPECT_EQ(view_->selectedText(), QStringLiteral("alpha beta\n"));
}

TEST_F(LargeTextViewTest, TheContextMenuCopiesAndSelectsAll) {
  view_->setText(QStringLiteral("text"));
  QContextMenuEvent event(QContextMenuEvent::Keyboard, {10, 10}, view_->mapToGlobal(QPoint(10, 10)));
  QApplication::sendEvent(view_.get(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions().size(), 2);
  EXPECT_FALSE(menu->actions()[0]->isEnabled());
  menu->actions()[1]->trigger();
  EXPECT_EQ(view_->selectedText(), QStringLiteral("text"));
  menu->close();
}

TEST_F(LargeTextViewTest, AScreenReaderIsToldWhatIsInSight) {
  view_->setText(QString(1'000'000, QLatin1Char('x')) + QStringLiteral("\nnext"));
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(view_.get());
  ASSERT_NE(accessible, nullptr);
  EXPECT_TRUE(accessible->state().readOnly);
  EXPECT_TRUE(accessible->state().multiLine);
  const QString value = accessible->text(QAccessible::Value);
  EXPECT_LT(value.size(), 1'000);
  EXPECT_TRUE(value.startsWith(QStringLiteral("xxx")));
  EXPECT_TRUE(value.endsWith(QStringLiteral("\nnext")));
}

}  // namespace
}  // namespace quillet::ui
