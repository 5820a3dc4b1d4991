#include "drive/control_values.h"

#include <string>

#include "drive/arguments.h"
#include "drive/json_values.h"
#include "platform/unicode_text.h"

namespace quillet::drive {

namespace {

enum class Settable { No, Yes };

class Description final : public ControlVisitor {
 public:
  using ControlVisitor::visit;

  explicit Description(Control& control) { control.accept(*this); }
  Description(const Description&) = delete;
  Description& operator=(const Description&) = delete;

  void visit(Label& label) override { value = jsonText(label.text()); }
  void visit(Button& button) override { value = jsonText(button.title()); }
  void visit(CheckBox& checkBox) override {
    settable = Settable::Yes;
    value = checkBox.isOn();
  }
  void visit(PopUpButton& popUp) override {
    settable = Settable::Yes;
    value = popUp.selectedTag();
    titles = json::array();
    for (const auto& item : popUp.items()) titles.push_back({item.tag, jsonText(item.title)});
  }
  void visit(TextField& field) override {
    settable = Settable::Yes;
    value = jsonText(field.text());
    placeholder = jsonText(field.placeholder());
  }
  void visit(TextView& view) override { value = jsonText(view.text()); }
  void visit(Table& table) override {
    settable = Settable::Yes;
    value = jsonIndexes(table.selectedRows());
    titles = jsonShownRows(table);
  }

  Settable settable = Settable::No;
  json value;
  json placeholder;
  json titles;
};

class Setter final : public ControlVisitor {
 public:
  using ControlVisitor::visit;

  Setter(const json& value, EndEditing endEditing)
      : command_{{"value", value}}, arguments_(command_, noRoot_), endEditing_(endEditing) {}

  void visit(Label&) override { refuse(); }
  void visit(Button&) override { refuse(); }
  void visit(CheckBox& checkBox) override {
    if (!command_["value"].is_boolean()) throw CommandError("a check box is true or false");
    checkBox.userSets(command_["value"].get<bool>());
  }
  void visit(PopUpButton& popUp) override { popUp.userSelects(arguments_.integer("value")); }
  void visit(TextField& field) override {
    field.userTypes(arguments_.text("value"));
    if (endEditing_ == EndEditing::Yes) field.userEndsEditing();
  }
  void visit(TextView&) override { refuse(); }
  void visit(Table& table) override { table.userSelects(arguments_.indexes("value")); }
  void visit(Box&) override { refuse(); }
  void visit(ProgressIndicator&) override { refuse(); }

 private:
  [[noreturn]] static void refuse() { throw CommandError("a control of this kind has no value to set"); }

  const std::string noRoot_;
  json command_;
  Arguments arguments_;
  EndEditing endEditing_;
};

bool isTable(Control& control) {
  return dynamic_cast<Table*>(&control) != nullptr;
}

}  // namespace

Control& controlNamed(const UserInterface& interface, const std::string& name) {
  Control* control = interface.control(name);
  if (!control) throw CommandError("there is no control " + name);
  return *control;
}

json describe(Control& control) {
  const Description description(control);
  return {{"value", description.value},
          {"enabled", control.isEnabled()},
          {"hidden", control.isHidden()},
          {"placeholder", description.placeholder},
          {"titles", description.titles}};
}

json settableValuesOf(const Window& window) {
  json values = json::object();
  for (Control* control : window.controls()) {
    const Description description(*control);
    if (description.settable == Settable::Yes) values[control->name()] = description.value;
  }
  return values;
}

void setAsUser(Control& control, const json& value, EndEditing endEditing) {
  Setter setter(value, endEditing);
  control.accept(setter);
}

void setAsUser(const UserInterface& interface, const json& values) {
  if (!values.is_object()) throw CommandError("\"values\" must be an object");
  for (const bool tables : {true, false})
    for (const auto& [name, value] : values.items()) {
      Control& control = controlNamed(interface, name);
      if (isTable(control) == tables) setAsUser(control, value, EndEditing::Yes);
    }
}

}  // namespace quillet::drive
