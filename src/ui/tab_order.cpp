#include "ui/tab_order.h"

#include <QDialogButtonBox>
#include <QWidget>
#include <algorithm>

#include "shell/controls.h"

namespace quillet::ui {

namespace {

QWidget* widgetOf(const QWidget& sheet, const Control* control) {
  return control ? sheet.findChild<QWidget*>(QString::fromStdString(control->name())) : nullptr;
}

const Control* helpButtonOf(const Window& window) {
  for (const Control* control : window.controls())
    if (control->handler() == "helpButtonPressed") return control;
  return nullptr;
}

// The fields, in the order in which Tab goes through them.
std::vector<QWidget*> fieldsOf(QWidget& sheet, const std::vector<QWidget*>& last) {
  std::vector<QWidget*> fields;
  for (QWidget* widget = sheet.nextInFocusChain(); widget != &sheet; widget = widget->nextInFocusChain()) {
    const bool isField = widget->focusPolicy() & Qt::TabFocus && widget->window() == &sheet &&
                         !qobject_cast<QDialogButtonBox*>(widget) && !widget->focusProxy();
    if (isField && std::find(last.begin(), last.end(), widget) == last.end()) fields.push_back(widget);
  }
  return fields;
}

}  // namespace

void setTabOrder(const std::vector<QWidget*>& widgets) {
  QWidget* previous = nullptr;
  for (QWidget* widget : widgets) {
    if (!widget) continue;
    if (previous) QWidget::setTabOrder(previous, widget);
    previous = widget;
  }
}

void beginSheetWithTheFirstField(const Window& window, QWidget& sheet) {
  const std::vector<QWidget*> last = {widgetOf(sheet, window.doneButton()),
                                      widgetOf(sheet, window.cancelButton()),
                                      widgetOf(sheet, helpButtonOf(window))};
  std::vector<QWidget*> all = fieldsOf(sheet, last);
  for (QWidget* button : last)
    if (button && std::find(all.begin(), all.end(), button) == all.end()) all.push_back(button);
  setTabOrder(all);
  const auto first = std::find_if(all.begin(), all.end(), [&](const QWidget* widget) {
    return widget->isEnabled() && widget->isVisibleTo(&sheet);
  });
  if (first != all.end()) (*first)->setFocus(Qt::TabFocusReason);
}

}  // namespace quillet::ui
