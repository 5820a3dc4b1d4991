// What a screen reader calls the fields of a form that have no label as their buddy.
#pragma once

class QWidget;

namespace quillet::ui {

// A field whose row begins with a check box is called as the box is, and a pop-up as its accessible name
// says: on Linux Qt reads the chosen item of a pop-up as its name, and what it is for from its label alone.
// Once a form, after its texts are set.
void nameFieldsWithoutLabel(QWidget& form);

}  // namespace quillet::ui
