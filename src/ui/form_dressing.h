// What every form gets beyond what its file says: icons, numbered steps, and labels as what they are for.
#pragma once

#include <QAbstractButton>
#include <QWidget>

namespace quillet::ui {

// The size is in logical pixels. Nothing without a button.
void setIcon(QAbstractButton* button, const char* name, int size = 18);

// The numbers of the steps in a help box.
void numberSteps(QWidget& form);

// Headings, titles and notes, as the form's labels say what they are; each is dimmed with its field.
void dressLabels(QWidget& form);

}  // namespace quillet::ui
