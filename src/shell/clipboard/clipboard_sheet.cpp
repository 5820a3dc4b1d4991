#include "shell/clipboard/clipboard_sheet.h"

#include <utility>

#include "operations/operation_description.h"
#include "shell/clipboard/last_panels.h"

namespace quillet {

ClipboardSheet::ClipboardSheet(UserInterface& interface, const Neighbours& neighbours, std::string name,
                               std::int64_t code, std::string_view clicked, std::u16string_view help)
    : neighbours_(neighbours),
      sheet_(interface, std::move(name), labelOfOperation(code)),
      handlers_{named("CancelButton").append(clicked), named("DoneButton").append(clicked)},
      buttons_(sheet_, sheet_.name(), handlers_, help) {}

void ClipboardSheet::addCommandsTo(Commands& commands) {
  commands.add(handlers_.done, [this] { doneButtonPressed(); });
  commands.add(handlers_.cancel, [this] { neighbours_.windows.endSheet(sheet_); });
}

void ClipboardSheet::open() {
  prepareForOpening();
  if (!neighbours_.window.isShown()) neighbours_.windows.orderBack(neighbours_.window);
  neighbours_.windows.beginSheet(sheet_, WindowName::ClipboardData);
}

void ClipboardSheet::doneButtonPressed() {
  const OperationRecord record = makeRecord();
  neighbours_.data.performClipboardDataOperation(record);
  remember(record);
  neighbours_.windows.endSheet(sheet_);
}

RememberingSheet::RememberingSheet(UserInterface& interface, const Neighbours& neighbours,
                                   const std::string& name, std::int64_t code, std::string lastKey,
                                   std::u16string_view help)
    : ClipboardSheet(interface, neighbours, name, code, "Pressed", help), lastKey_(std::move(lastKey)) {}

void RememberingSheet::prepareForOpening() {
  fill(lastDictionary(neighbours().defaults, lastKey_));
}

void RememberingSheet::remember(const OperationRecord& record) {
  storeLastDictionaryToDefaults(neighbours().defaults, record, lastKey_);
}

std::u16string RememberingSheet::selectedCells() const {
  return neighbours().data.selection().selected2DIndexSet().stringPlus1FromAllIndexes();
}

}  // namespace quillet
