#include "ui/guide_pictures.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QPixmap>
#include <nlohmann/json.hpp>
#include <variant>

#include "operations/operation_codes.h"
#include "shell/operation_json.h"
#include "ui/quillet_application.h"
#include "ui/temporary_folders.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr std::int64_t kOutputAsTable = 2;  // the tag of the preview's pop-up
constexpr const char* kFiles[] = {"customers.csv", "orders.txt", "stock.csv"};
constexpr std::int64_t kCustomers = 0;
constexpr std::int64_t kOrders = 1;
constexpr std::int64_t kStock = 2;

// What the user sets in a control: a check box, a pop-up by its tag, a text, the rows of a table.
using Value = std::variant<bool, std::int64_t, std::u16string, IndexSet>;
struct Setting {
  const char* control;  // without the name of its sheet
  Value value;
};

// Copies the samples to where their paths tell nothing of this machine.
bool copySamples(const QString& samples, const QString& home) {
  const QString documents = home + QStringLiteral("/Documents");
  if (!QDir(home).removeRecursively() || !QDir().mkpath(documents)) return false;
  for (const char* name : kFiles) {
    const QString file = QLatin1Char('/') + QLatin1String(name);
    if (!QFile::copy(samples + file, documents + file)) return false;
  }
  return QFile::copy(samples + QStringLiteral("/clean-customers.json"), home + QStringLiteral("/list.json"));
}

// Bytes that are no text are shown as such, which is what the list of operations looks for.
bool writeDefaults(const QString& home) {
  QFile file(home + QStringLiteral("/defaults.json"));
  return file.open(QIODevice::WriteOnly) && file.write("{\"DecodeErrorReplacement\": \"\\ufffd\"}") > 0;
}

std::optional<OperationList> operationsOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return operationsFromJson(nlohmann::json::parse(file.readAll().toStdString(), nullptr, false));
}

class GuidePhotographer {
 public:
  GuidePhotographer(QuilletApplication& quillet, QString home, QString folder)
      : quillet_(quillet), home_(std::move(home)), folder_(std::move(folder)) {}

  bool takeAll() {
    cleanCustomers();
    saveJob("window", u"Clean customers");
    shoot("window", "main-window");
    panels();
    clipboardWindow();
    previousJobs();
    perform("preferencesMenuItemClicked");
    set("preferencesWindowDecodeErrorReplacementTextField", std::u16string(u"?"));
    shoot("preferencesWindow", "preferences");
    return allWritten_;
  }

 private:
  AppDelegate& application() { return quillet_.application(); }
  void perform(const char* command) { application().interface().commands().perform(command); }

  void shoot(std::string_view window, const char* name) {
    QApplication::processEvents();
    QWidget* widget = quillet_.windows().widget(window);
    const QString path = QStringLiteral("%1/%2.png").arg(folder_, QLatin1String(name));
    allWritten_ = widget && widget->grab().save(path) && allWritten_;
  }

  void set(const std::string& control, const Value& value) {
    Control* found = application().interface().control(control);
    if (const auto* on = std::get_if<bool>(&value))
      dynamic_cast<CheckBox&>(*found).userSets(*on);
    else if (const auto* tag = std::get_if<std::int64_t>(&value))
      dynamic_cast<PopUpButton&>(*found).userSelects(*tag);
    else if (const auto* text = std::get_if<std::u16string>(&value))
      dynamic_cast<TextField&>(*found).setText(*text);
    else
      dynamic_cast<Table&>(*found).userSelects(std::get<IndexSet>(value));
  }
  void fill(const std::string& sheet, const std::vector<Setting>& settings) {
    for (const Setting& setting : settings) set(sheet + setting.control, setting.value);
  }
  Window& sheet(const std::string& name) { return *application().interface().window(name); }

  void selectFile(std::int64_t row) { application().fileSelection().select(IndexSet{row}); }

  void cleanCustomers() {
    if (auto operations = operationsOf(home_ + QStringLiteral("/list.json")))
      application().inputFileList().setOperations(kCustomers, *std::move(operations));
    else
      allWritten_ = false;
    selectFile(kStock);
    selectFile(kCustomers);
    set("previewTypePopUpButton", kOutputAsTable);
  }

  void saveJob(std::string_view window, const char16_t* name) {
    // The active window says what is saved.
    QApplication::setActiveWindow(quillet_.windows().widget(window));
    perform("saveJobMenuItemClicked");
    set("saveJobWindowJobNameComboBox", std::u16string(name));
    dynamic_cast<Button&>(*application().interface().control("saveJobWindowSaveButton")).press();
  }

  // Shown with these settings, then cancelled.
  void panel(std::int64_t code, const std::string& window, const std::vector<Setting>& settings,
             const char* name) {
    application().operationEditor().showPanelForAdding(code);
    fill(window, settings);
    shoot(window, name);
    sheet(window).cancelButton()->press();
  }

  void columnPanels() {
    panel(OpReformatColumn, "reformatColumnOperationWindow",
          {{"ColumnsTableView", IndexSet{2}},
           {"ReformatAsPopUpButton", std::int64_t{1}},
           {"DatePopUpButton", std::int64_t{4}},
           {"UseInvalidStringButton", true},
           {"InvalidString", std::u16string(u"unknown")}},
          "reformat-column");
    panel(OpRearrangeColumns, "rearrangeColumnsOperationWindow", {{"ColumnsTableView", IndexSet{1}}},
          "rearrange-columns");
    panel(OpJoinColumns, "joinColumnsOperationWindow",
          {{"ColumnsTableView", IndexSet{0, 1}}, {"SeparatorTextField", std::u16string(u"-")}},
          "join-columns");
  }

  void panels() {
    selectFile(kOrders);
    application().operationTable().table().userSelects(IndexSet{0});
    perform("showOperationWindow");
    shoot("initialOperationsWindow", "initial");
    sheet("initialOperationsWindow").cancelButton()->press();
    columnPanels();
    selectFile(kStock);
    panel(OpSkipLine, "skipLineOperationWindow",
          {{"SkipIfPopUpButton", std::int64_t{2}}, {"TextField", std::u16string(u"1")}}, "skip-line");
  }

  void gridSheet(const char* command, const std::string& window, const std::vector<Setting>& settings) {
    perform(command);
    fill(window, settings);
    sheet(window).doneButton()->press();
  }

  void clipboardWindow() {
    QApplication::clipboard()->setText(QStringLiteral(
        "Stock of 1 May\nA-100;bolt M6;EUR 0.10;1200\nA-107;nut M6, brass;EUR 1.13;340\n"
        "A-114;washer;EUR 2.16\nA-121;bracket;EUR 3.90;12\nA-128;hinge;EUR 4.22;58\nA-135;screw"));
    perform("clipboardDataWindowMenuItemClicked");
    perform("clipboardDataWindowRefreshNowButtonPressed");
    const std::string split = "clipboardDataSplitWindow";
    const std::vector<Setting> separators = {{"LineSeparatorComboBox", std::u16string(u"\\n")},
                                             {"SplitClipboardIntoLinesCheckbox", true},
                                             {"ColumnSeparatorComboBox", std::u16string(u";")},
                                             {"SplitLinesIntoColumnsCheckbox", true}};
    perform("clipboardDataWindowSplitButtonPressed");
    fill(split, separators);
    shoot(split, "split");
    sheet(split).doneButton()->press();
    ClipboardGroup& clipboard = application().clipboard();
    perform("clipboardDataWindowShiftTruncateTopMenuItemClicked");
    clipboard.table().didClickTableColumn(3, {});
    gridSheet("clipboardDataWindowReplaceButtonPressed", "clipboardDataReplaceWindow",
              {{"WhatTextField", std::u16string(u"EUR ")}});
    gridSheet("clipboardDataWindowTrimButtonPressed", "clipboardDataTrimWindow",
              {{"TrimWhatPopUpButton", std::int64_t{2}}});
    quillet_.windows().widget("clipboardDataWindow")->resize(960, 480);
    shoot("clipboardDataWindow", "clipboard-window");
    saveJob("clipboardDataWindow", u"Prices without their unit");
  }

  void previousJobs() {
    perform("previousJobsWindowMenuItemActionClicked");
    set("previousJobsWindowJobsTableView", IndexSet{1});
    set("previousJobsWindowFilesTableView", IndexSet{0});
    quillet_.windows().widget("previousJobsWindow")->resize(900, 520);
    shoot("previousJobsWindow", "previous-jobs");
  }

  QuilletApplication& quillet_;
  QString home_;
  QString folder_;
  bool allWritten_ = true;
};

std::vector<std::string> pathsIn(const QString& home) {
  std::vector<std::string> paths;
  for (const char* name : kFiles)
    paths.push_back(QFile::encodeName(home).toStdString() + "/Documents/" + name);
  return paths;
}

}  // namespace

bool writeGuidePictures(QApplication& application, const QString& samples, const QString& folder) {
  // Always the same place, as a picture shows it.
  const QString home = QDir::tempPath() + QStringLiteral("/quillet");
  if (!QDir().mkpath(folder) || !copySamples(samples, home) || !writeDefaults(home)) return false;
  applyTheme(application, Scheme::Light);
  bool written = false;
  {
    QuilletApplication quillet(std::make_shared<TemporaryFolders>(QFile::encodeName(home).toStdString()));
    quillet.launch(pathsIn(home));
    written = GuidePhotographer(quillet, home, folder).takeAll();
  }
  return QDir(home).removeRecursively() && written;
}

}  // namespace quillet::ui
