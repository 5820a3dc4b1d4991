// Where the windows stood, how large they were, and how their panes were divided, from one start to the next.
#pragma once

#include <QSettings>
#include <QString>
#include <QWidget>

namespace quillet::ui {

// Makes the window no larger than what is free of its screen, in logical pixels, less a title above it; and
// no smaller than its least size.
void fitOnScreen(QWidget& window, QSize available);

// A settings file of the view alone; what it holds and cannot be read leaves the window as it is. Main thread
// only.
class WindowPlaces {
 public:
  explicit WindowPlaces(const QString& file) : settings_(file, QSettings::IniFormat) {}

  // Before the window is shown for the first time. One without a place is made to fit its screen.
  void restore(const QString& name, QWidget& window);
  // A window that was not shown keeps what is stored of it.
  void store(const QString& name, const QWidget& window);
  bool sync();  // false if the file could not be written

 private:
  QSettings settings_;
};

}  // namespace quillet::ui
