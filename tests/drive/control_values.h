// Controls as the tool prints and sets them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "shell/controls.h"

namespace quillet::drive {

using nlohmann::json;

// Throws CommandError for an unknown name.
Control& controlNamed(const UserInterface& interface, const std::string& name);

// "value", "enabled", "hidden", "placeholder" and "titles". The value of a check box is a boolean, of a
// pop-up its selected tag, of a text its text, of a table its selected rows, of a button its title; null for
// what has no value.
json describe(Control& control);
// The values of a sheet's controls that a user can set.
json settableValuesOf(const Window& window);

enum class EndEditing { No, Yes };

// Sets the control as the user does, enabled or not. Throws CommandError for a value of another type.
void setAsUser(Control& control, const json& value, EndEditing endEditing);
// From name to value, tables first: other controls may depend on their selection. Throws CommandError for an
// unknown name.
void setAsUser(const UserInterface& interface, const json& values);

}  // namespace quillet::drive
