// How the desktop wants its programs to look, now and later, and what Quillet makes of it.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QString>
#include <optional>

#include "ui/theme.h"

class QApplication;

namespace quillet::ui {

struct DesktopLook {
  QString style;                    // that Qt chose for the platform, such as "breeze"
  std::optional<QPalette> palette;  // of the platform's theme; none where only the style has one
  bool prefersDark = false;         // these two by the desktop portal
  bool prefersContrast = false;
};

// The style is the platform's or Fusion, the palette the platform's or ours.
struct Look {
  bool keepsStyle = false;
  QPalette palette;
};

// macOS, Windows and Breeze stay as they are. Elsewhere a high-contrast palette of the system wins over ours;
// ours follows the lightness of the system's, or without one the portal. Where the portal alone asks for more
// contrast it gets black and white.
Look lookFor(const DesktopLook& desktop);

// As it is now; asked before anything else sets a style or a palette.
DesktopLook lookOfDesktop();

// Black or white is its window, and its texts stand out 15 to 1.
bool isHighContrast(const QPalette& palette);

// Between 1 and 21, as WCAG 2 measures it.
double contrastOf(const QColor& one, const QColor& other);

// Gives the application the look of the desktop and follows the portal while it stands. Main thread only.
class LookFollower final : public QObject {
  Q_OBJECT

 public:
  // The application outlives it.
  LookFollower(QApplication& application, DesktopLook desktop);

 public slots:
  // What the portal tells: the new value of one of its settings.
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void apply();

  QApplication& application_;
  DesktopLook desktop_;
};

}  // namespace quillet::ui
