#include "ui/stage.h"

#include <QApplication>
#include <QDialog>
#include <QPixmap>

namespace quillet::ui {

void Stage::set(const std::string& control, const Value& value) {
  Control* found = application().interface().control(control);
  if (const auto* on = std::get_if<bool>(&value))
    dynamic_cast<CheckBox&>(*found).userSets(*on);
  else if (const auto* tag = std::get_if<std::int64_t>(&value))
    dynamic_cast<PopUpButton&>(*found).userSelects(*tag);
  else if (const auto* text = std::get_if<std::u16string>(&value))
    dynamic_cast<TextField&>(*found).setText(*text);
  else
    dynamic_cast<Table&>(*found).userSelects(std::get<IndexSet>(value));
}

void Stage::fill(const std::string& sheet, const std::vector<Setting>& settings) {
  for (const Setting& setting : settings) set(sheet + setting.control, setting.value);
}

void Stage::performSheet(const char* command, const std::string& sheet,
                         const std::vector<Setting>& settings) {
  perform(command);
  fill(sheet, settings);
  window(sheet).doneButton()->press();
}

void Stage::saveJob(std::string_view window, const char16_t* name) {
  // The active window says what is saved.
  QApplication::setActiveWindow(widget(window));
  perform("saveJobMenuItemClicked");
  set("saveJobWindowJobNameComboBox", std::u16string(name));
  dynamic_cast<Button&>(*application().interface().control("saveJobWindowSaveButton")).press();
}

void Stage::shoot(QWidget* widget, const QString& name) {
  QApplication::processEvents();
  const QString path = QStringLiteral("%1/%2%3.png").arg(folder_, name, suffix_);
  allWritten_ = widget && widget->grab().save(path) && allWritten_;
}

void Stage::shootSheet(const std::string& sheet, const QString& name) {
  shoot(sheet, name);
  window(sheet).cancelButton()->press();
}

void Stage::shootDialog(const QString& name) {
  QApplication::processEvents();
  for (QWidget* candidate : QApplication::allWidgets()) {
    auto* dialog = qobject_cast<QDialog*>(candidate);
    // The application's own sheets stay for the next time.
    if (!dialog || !dialog->isVisible() || !dialog->testAttribute(Qt::WA_DeleteOnClose)) continue;
    shoot(dialog, name);
    dialog->reject();
    QApplication::processEvents();
    return;
  }
  fail();
}

}  // namespace quillet::ui
