// A sheet of the main window that edits one kind of operation record. It serves for adding and for editing,
// and keeps what it held last: similar operations are often added in a row.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "operations/operation_record.h"
#include "shell/controls.h"
#include "shell/panels/sheet_buttons.h"

namespace quillet {

// Main thread only.
class OperationPanel {
 public:
  virtual ~OperationPanel() = default;
  OperationPanel(const OperationPanel&) = delete;
  OperationPanel& operator=(const OperationPanel&) = delete;

  Window& window() { return window_; }
  // Its tag is the code to add, or 0 when the selected operation is being edited.
  Button& doneButton() { return buttons_.done(); }

  // Before the panel opens for adding an operation of this code.
  virtual void prepareForAdding(std::int64_t code);

  enum class Opens { No, Yes };
  // Puts the values of a record into the controls, before the panel opens for editing it, unless it cannot.
  virtual Opens fill(const OperationRecord& record) = 0;

  // Writes what the controls hold into a record that is being edited, whose other keys stay.
  virtual void write(OperationRecord& record) const = 0;
  // A record with the code and what the controls hold.
  virtual OperationRecord makeRecord(std::int64_t code) const;

 protected:
  // The names of the controls begin with controlPrefix. The interface outlives the panel.
  OperationPanel(UserInterface& interface, std::string windowName, std::string controlPrefix,
                 std::u16string title, std::u16string_view help);
  // The prefix is that of the window, the title that of the operation.
  OperationPanel(UserInterface& interface, const std::string& windowName, std::int64_t code,
                 std::u16string_view help);

  std::string named(std::string_view end) const { return controlPrefix_ + std::string(end); }

 private:
  Window window_;
  std::string controlPrefix_;
  SheetButtons buttons_;
};

// Sets or clears one bit of the flags under IntArg1; the others stay.
void setFlag(OperationRecord& record, std::int64_t flag, bool on);
bool hasFlag(const OperationRecord& record, std::int64_t flag);

}  // namespace quillet
