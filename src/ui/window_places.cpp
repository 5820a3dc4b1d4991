#include "ui/window_places.h"

#include <QSplitter>

namespace quillet::ui {

namespace {

// The pane that the user can hide.
constexpr const char* kPaneToHide = "clipboardDataWindowOperationsPane";

QString keyOf(const QString& window, const QString& part) {
  return window + QLatin1Char('/') + part;
}

}  // namespace

void WindowPlaces::restore(const QString& name, QWidget& window) {
  window.restoreGeometry(settings_.value(keyOf(name, QStringLiteral("geometry"))).toByteArray());
  for (QSplitter* splitter : window.findChildren<QSplitter*>())
    splitter->restoreState(settings_.value(keyOf(name, splitter->objectName())).toByteArray());
  if (auto* pane = window.findChild<QWidget*>(QLatin1String(kPaneToHide)))
    pane->setVisible(settings_.value(keyOf(name, pane->objectName()), true).toBool());
}

void WindowPlaces::store(const QString& name, const QWidget& window) {
  if (!window.testAttribute(Qt::WA_WState_Created)) return;
  settings_.setValue(keyOf(name, QStringLiteral("geometry")), window.saveGeometry());
  for (const QSplitter* splitter : window.findChildren<QSplitter*>())
    settings_.setValue(keyOf(name, splitter->objectName()), splitter->saveState());
  if (const auto* pane = window.findChild<QWidget*>(QLatin1String(kPaneToHide)))
    settings_.setValue(keyOf(name, pane->objectName()), !pane->isHidden());
}

bool WindowPlaces::sync() {
  settings_.sync();
  return settings_.status() == QSettings::NoError;
}

}  // namespace quillet::ui
