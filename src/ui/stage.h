// A session that is played for pictures: commands are performed, controls set as a user sets them, and
// windows photographed.
#pragma once

#include <QString>
#include <string>
#include <variant>
#include <vector>

#include "ui/quillet_application.h"

namespace quillet::ui {

// The tag of the preview's pop-up for the output as a table.
inline constexpr std::int64_t kOutputAsTable = 2;

class Stage {
 public:
  // What the user sets in a control: a check box, a pop-up by its tag, a text, the rows of a table.
  using Value = std::variant<bool, std::int64_t, std::u16string, IndexSet>;
  struct Setting {
    const char* control;  // without the name of its sheet
    Value value;
  };

  // Pictures go to the folder as NAME, the suffix, and ".png". The application outlives the stage.
  Stage(QuilletApplication& quillet, QString folder, QString suffix)
      : quillet_(quillet), folder_(std::move(folder)), suffix_(std::move(suffix)) {}

  AppDelegate& application() { return quillet_.application(); }
  QWidget* widget(std::string_view window) { return quillet_.windows().widget(window); }
  Window& window(std::string_view name) { return *application().interface().window(name); }

  void perform(const char* command) { application().interface().commands().perform(command); }
  void set(const std::string& control, const Value& value);
  void fill(const std::string& sheet, const std::vector<Setting>& settings);
  void selectFiles(const IndexSet& rows) { application().fileSelection().select(rows); }
  // Opens a sheet by its command, fills it and confirms it.
  void performSheet(const char* command, const std::string& sheet, const std::vector<Setting>& settings);
  // The job of the window that is in front.
  void saveJob(std::string_view window, const char16_t* name);

  void shoot(std::string_view window, const QString& name) { shoot(widget(window), name); }
  void shoot(QWidget* widget, const QString& name);
  // The open sheet, which is cancelled then.
  void shootSheet(const std::string& sheet, const QString& name);
  // The dialog that is no sheet of the application (an alert, a prompt), which is closed then.
  void shootDialog(const QString& name);

  // Whether every picture so far was written.
  bool allWritten() const { return allWritten_; }
  void fail() { allWritten_ = false; }

 private:
  QuilletApplication& quillet_;
  QString folder_;
  QString suffix_;
  bool allWritten_ = true;
};

}  // namespace quillet::ui
