// One level of undo: it holds one action at most, which is to be undone or to be redone.
#pragma once

#include <functional>
#include <string>

namespace quillet {

// Main thread only.
class UndoManager {
 public:
  using Action = std::function<void()>;

  // Takes the place of the action that is held. Called while undo() performs one, what it registers is the
  // redo; while redo() does, the undo again.
  void registerUndo(std::u16string actionName, Action action);
  void removeAllActions();

  bool canUndo() const { return kind_ == Kind::Undo; }
  bool canRedo() const { return kind_ == Kind::Redo; }
  // "" where there is nothing to undo or redo.
  std::u16string undoActionName() const { return canUndo() ? actionName_ : std::u16string(); }
  std::u16string redoActionName() const { return canRedo() ? actionName_ : std::u16string(); }

  // False where there is nothing to undo or redo.
  bool undo();
  bool redo();

 private:
  enum class Kind { None, Undo, Redo };

  bool performAction(Kind kind, Kind kindOfRegistered);

  Kind kind_ = Kind::None;
  Kind registeredKind_ = Kind::Undo;  // of what is registered now
  std::u16string actionName_;
  Action action_;
};

}  // namespace quillet
