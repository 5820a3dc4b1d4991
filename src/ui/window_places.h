// Where the windows stood, how large they were, and how their panes were divided, from one start to the next.
#pragma once

#include <QSettings>
#include <QString>
#include <QWidget>

namespace quillet::ui {

// A settings file of the view alone; what it holds and cannot be read leaves the window as it is. Main thread
// only.
class WindowPlaces {
 public:
  explicit WindowPlaces(const QString& file) : settings_(file, QSettings::IniFormat) {}

  // Before the window is shown for the first time.
  void restore(const QString& name, QWidget& window);
  // A window that was not shown keeps what is stored of it.
  void store(const QString& name, const QWidget& window);
  bool sync();  // false if the file could not be written

 private:
  QSettings settings_;
};

}  // namespace quillet::ui
