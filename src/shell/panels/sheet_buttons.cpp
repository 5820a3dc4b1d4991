#include "shell/panels/sheet_buttons.h"

#include "platform/localization.h"

namespace quillet {

SheetButtons::SheetButtons(Window& sheet, const std::string& prefix, const Handlers& handlers,
                           std::u16string_view help)
    : cancel_(sheet, prefix + "CancelButton", localized(u"Cancel"), handlers.cancel),
      done_(sheet, prefix + "DoneButton", localized(u"Done"), handlers.done) {
  sheet.setSheetButtons(done_, cancel_);
  if (help.empty()) return;
  help_.emplace(sheet, prefix + "HelpButton", std::u16string(), "helpButtonPressed");
  help_->setToolTip(localized(help));
}

}  // namespace quillet
