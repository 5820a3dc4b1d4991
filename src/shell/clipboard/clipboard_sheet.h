// A sheet of the clipboard data window: it makes one kind of record from what it holds and from the
// selection. Done performs the record and closes the sheet, Cancel only closes it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clipboard/clipboard_data.h"
#include "clipboard/clipboard_display.h"
#include "operations/operation_record.h"
#include "platform/user_defaults.h"
#include "shell/controls.h"
#include "shell/desktop.h"
#include "shell/panels/sheet_buttons.h"

namespace quillet {

// Main thread only.
class ClipboardSheet {
 public:
  // All outlive the sheet.
  struct Neighbours {
    ClipboardData& data;
    ClipboardDisplay& display;
    Window& window;  // the clipboard data window
    UserDefaults& defaults;
    WindowServer& windows;
  };

  virtual ~ClipboardSheet() = default;
  ClipboardSheet(const ClipboardSheet&) = delete;
  ClipboardSheet& operator=(const ClipboardSheet&) = delete;

  void addCommandsTo(Commands& commands);  // of Done and Cancel

  // Fills the sheet and opens it. A window that is hidden is shown first, as it was left; which window is key
  // is not changed by that.
  void open();

 protected:
  // The names of the controls begin with the name of the sheet; those of the two handlers end in clicked:
  // "Pressed" or "Clicked". The title is that of the operations of the code; help may be empty.
  ClipboardSheet(UserInterface& interface, const Neighbours& neighbours, std::string name, std::int64_t code,
                 std::string_view clicked, std::u16string_view help);

  Window& sheet() { return sheet_; }
  const Neighbours& neighbours() const { return neighbours_; }
  std::string named(std::string_view end) const { return sheet_.name() + std::string(end); }

  virtual void prepareForOpening() = 0;
  virtual OperationRecord makeRecord() const = 0;
  virtual void remember(const OperationRecord&) {}  // performed already, while the sheet is still open
  virtual void doneButtonPressed();

 private:
  Neighbours neighbours_;
  Window sheet_;
  SheetButtons::Handlers handlers_;
  SheetButtons buttons_;
};

// One that opens with the record that it was used with last.
class RememberingSheet : public ClipboardSheet {
 protected:
  // The record is kept under lastKey.
  RememberingSheet(UserInterface& interface, const Neighbours& neighbours, const std::string& name,
                   std::int64_t code, std::string lastKey, std::u16string_view help);

  virtual void fill(const OperationRecord& record) = 0;  // an empty record at first

  // The selected cells as a record names them.
  std::u16string selectedCells() const;

 private:
  void prepareForOpening() final;
  void remember(const OperationRecord& record) final;

  std::string lastKey_;
};

}  // namespace quillet
