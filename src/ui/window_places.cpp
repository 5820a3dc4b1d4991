#include "ui/window_places.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>
#include <QStyle>

namespace quillet::ui {

namespace {

// The pane that the user can hide.
constexpr const char* kPaneToHide = "clipboardDataWindowOperationsPane";

QString keyOf(const QString& window, const QString& part) {
  return window + QLatin1Char('/') + part;
}

}  // namespace

void fitOnScreen(QWidget& window, QSize available) {
  const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  window.resize(window.size().boundedTo(available - QSize(0, title)));
}

void WindowPlaces::restore(const QString& name, QWidget& window) {
  if (!window.restoreGeometry(settings_.value(keyOf(name, QStringLiteral("geometry"))).toByteArray()))
    if (QGuiApplication::platformName() !=
        QLatin1String("offscreen"))  // which has no screen to be larger than
      fitOnScreen(window, window.screen()->availableSize());
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
