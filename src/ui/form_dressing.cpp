#include "ui/form_dressing.h"

#include <QEvent>
#include <QLabel>

#include "ui/icons.h"
#include "ui/label_colour.h"

namespace quillet::ui {

namespace {

constexpr int kKerning = 2;  // pixels; what one pair of letters may move together

// A label looks as its field does, on or off.
class Dimmer final : public QObject {
 public:
  explicit Dimmer(QLabel& label) : QObject(&label), label_(label) { label.buddy()->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange)
      label_.setEnabled(static_cast<QWidget*>(watched)->isEnabled());
    return false;
  }

 private:
  QLabel& label_;
};

void dimWithBuddy(QLabel& label) {
  label.setEnabled(label.buddy()->isEnabled());
  new Dimmer(label);
}

}  // namespace

void setIcon(QAbstractButton* button, const char* name, int size) {
  if (!button) return;
  button->setIcon(icon(QLatin1String(name)));
  button->setIconSize({size, size});
}

void numberSteps(QWidget& form) {
  for (QLabel* label : form.findChildren<QLabel*>())
    if (const int step = label->property("step").toInt())
      label->setText(QStringLiteral("%1.  %2").arg(step).arg(label->text()));
}

void dressLabels(QWidget& form) {
  for (QLabel* label : form.findChildren<QLabel*>()) {
    const QString role = label->property("role").toString();
    QFont font = label->font();
    if (role == QLatin1String("heading")) font.setBold(true);
    if (role == QLatin1String("title")) font.setPixelSize(20);
    label->setFont(font);
    // Where a letter is underlined there is no kerning, so the text is wider than Qt measures it.
    if (label->buddy()) {
      label->setMinimumWidth(label->sizeHint().width() + kKerning);
      dimWithBuddy(*label);
    }
    if (role == QLatin1String("secondary")) setTextColour(*label, TextColour::SecondaryLabel);
  }
}

}  // namespace quillet::ui
