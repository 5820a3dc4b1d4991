#include "ui/accessible_names.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <algorithm>

#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

bool hasLabel(const QWidget& field) {
  const auto labels = field.parentWidget()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
  return std::any_of(labels.begin(), labels.end(),
                     [&](const QLabel* label) { return label->buddy() == &field; });
}

// Not to be seen: the text is on the screen already, or would be too much there.
void addLabel(QWidget& field, const QString& text) {
  auto* label = new QLabel(text, field.parentWidget());
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(&field);
  label->hide();
}

QWidget* widgetAt(const QFormLayout& layout, int row, QFormLayout::ItemRole role) {
  const QLayoutItem* item = layout.itemAt(row, role);
  return item ? item->widget() : nullptr;
}

}  // namespace

void nameFieldsWithoutLabel(QWidget& form) {
  for (const QFormLayout* layout : form.findChildren<QFormLayout*>())
    for (int row = 0; row < layout->rowCount(); ++row) {
      const auto* box = qobject_cast<QCheckBox*>(widgetAt(*layout, row, QFormLayout::LabelRole));
      QWidget* field = widgetAt(*layout, row, QFormLayout::FieldRole);
      if (box && field) addLabel(*field, withoutMnemonic(box->text()));
    }
  for (QComboBox* popUp : form.findChildren<QComboBox*>())
    if (!popUp->accessibleName().isEmpty() && !hasLabel(*popUp)) addLabel(*popUp, popUp->accessibleName());
}

}  // namespace quillet::ui
