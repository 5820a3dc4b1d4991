#include "shell/panels/operation_panel.h"

#include <utility>

#include "operations/operation_codes.h"
#include "operations/operation_description.h"

namespace quillet {

OperationPanel::OperationPanel(UserInterface& interface, std::string windowName, std::string controlPrefix,
                               std::u16string title, std::u16string_view help)
    : window_(interface, std::move(windowName), std::move(title)),
      controlPrefix_(std::move(controlPrefix)),
      buttons_(window_, controlPrefix_,
               {"operationsWindowCancelButtonClicked", "operationsWindowDoneButtonClicked"}, help) {}

OperationPanel::OperationPanel(UserInterface& interface, const std::string& windowName, std::int64_t code,
                               std::u16string_view help)
    : OperationPanel(interface, windowName, windowName, labelOfOperation(code), help) {}

void OperationPanel::prepareForAdding(std::int64_t) {}

OperationRecord OperationPanel::makeRecord(std::int64_t code) const {
  OperationRecord record{{"Code", code}};
  write(record);
  return record;
}

void setFlag(OperationRecord& record, std::int64_t flag, bool on) {
  const std::int64_t flags = record.integer("IntArg1", 0);
  record.set("IntArg1", on ? flags | flag : flags & ~flag);
}

bool hasFlag(const OperationRecord& record, std::int64_t flag) {
  return hasFlags(record.integer("IntArg1", 0), flag);
}

}  // namespace quillet
