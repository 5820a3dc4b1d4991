#include "clipboard/undo_manager.h"

#include <utility>

namespace quillet {

void UndoManager::registerUndo(std::u16string actionName, Action action) {
  kind_ = registeredKind_;
  actionName_ = std::move(actionName);
  action_ = std::move(action);
}

void UndoManager::removeAllActions() {
  kind_ = Kind::None;
  actionName_.clear();
  action_ = nullptr;
}

bool UndoManager::performAction(Kind kind, Kind kindOfRegistered) {
  if (kind_ != kind) return false;
  const Action action = std::exchange(action_, nullptr);
  removeAllActions();
  registeredKind_ = kindOfRegistered;
  action();
  registeredKind_ = Kind::Undo;
  return true;
}

bool UndoManager::undo() {
  return performAction(Kind::Undo, Kind::Redo);
}

bool UndoManager::redo() {
  return performAction(Kind::Redo, Kind::Undo);
}

}  // namespace quillet
