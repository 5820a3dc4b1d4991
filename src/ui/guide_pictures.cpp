#include "ui/guide_pictures.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <nlohmann/json.hpp>

#include "operations/operation_codes.h"
#include "shell/operation_json.h"
#include "ui/stage.h"
#include "ui/temporary_folders.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr const char* kFiles[] = {"customers.csv", "orders.txt", "stock.csv"};
constexpr std::int64_t kCustomers = 0;
constexpr std::int64_t kOrders = 1;
constexpr std::int64_t kStock = 2;

using Setting = Stage::Setting;

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
  GuidePhotographer(QuilletApplication& quillet, QString home, const QString& folder)
      : stage_(quillet, folder, {}), home_(std::move(home)) {}

  bool takeAll() {
    cleanCustomers();
    stage_.saveJob("window", u"Clean customers");
    stage_.shoot("window", QStringLiteral("main-window"));
    panels();
    clipboardWindow();
    previousJobs();
    stage_.perform("preferencesMenuItemClicked");
    stage_.set("preferencesWindowDecodeErrorReplacementTextField", std::u16string(u"?"));
    stage_.shoot("preferencesWindow", QStringLiteral("preferences"));
    return stage_.allWritten();
  }

 private:
  AppDelegate& application() { return stage_.application(); }

  void cleanCustomers() {
    if (auto operations = operationsOf(home_ + QStringLiteral("/list.json")))
      application().inputFileList().setOperations(kCustomers, *std::move(operations));
    else
      stage_.fail();
    stage_.selectFiles(IndexSet{kStock});
    stage_.selectFiles(IndexSet{kCustomers});
    stage_.set("previewTypePopUpButton", kOutputAsTable);
  }

  // Shown with these settings, then cancelled.
  void panel(std::int64_t code, const std::string& window, const std::vector<Setting>& settings,
             const char* name) {
    application().operationEditor().showPanelForAdding(code);
    stage_.fill(window, settings);
    stage_.shootSheet(window, QLatin1String(name));
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
    stage_.selectFiles(IndexSet{kOrders});
    application().operationTable().table().userSelects(IndexSet{0});
    stage_.perform("showOperationWindow");
    stage_.shootSheet("initialOperationsWindow", QStringLiteral("initial"));
    columnPanels();
    stage_.selectFiles(IndexSet{kStock});
    panel(OpSkipLine, "skipLineOperationWindow",
          {{"SkipIfPopUpButton", std::int64_t{2}}, {"TextField", std::u16string(u"1")}}, "skip-line");
  }

  void clipboardWindow() {
    QApplication::clipboard()->setText(QStringLiteral(
        "Stock of 1 May\nA-100;bolt M6;EUR 0.10;1200\nA-107;nut M6, brass;EUR 1.13;340\n"
        "A-114;washer;EUR 2.16\nA-121;bracket;EUR 3.90;12\nA-128;hinge;EUR 4.22;58\nA-135;screw"));
    stage_.perform("clipboardDataWindowMenuItemClicked");
    stage_.perform("clipboardDataWindowRefreshNowButtonPressed");
    const std::string split = "clipboardDataSplitWindow";
    const std::vector<Setting> separators = {{"LineSeparatorComboBox", std::u16string(u"\\n")},
                                             {"SplitClipboardIntoLinesCheckbox", true},
                                             {"ColumnSeparatorComboBox", std::u16string(u";")},
                                             {"SplitLinesIntoColumnsCheckbox", true}};
    stage_.perform("clipboardDataWindowSplitButtonPressed");
    stage_.fill(split, separators);
    stage_.shoot(split, QStringLiteral("split"));
    stage_.window(split).doneButton()->press();
    ClipboardGroup& clipboard = application().clipboard();
    stage_.perform("clipboardDataWindowShiftTruncateTopMenuItemClicked");
    clipboard.table().didClickTableColumn(3, {});
    stage_.performSheet("clipboardDataWindowReplaceButtonPressed", "clipboardDataReplaceWindow",
                        {{"WhatTextField", std::u16string(u"EUR ")}});
    stage_.performSheet("clipboardDataWindowTrimButtonPressed", "clipboardDataTrimWindow",
                        {{"TrimWhatPopUpButton", std::int64_t{2}}});
    stage_.widget("clipboardDataWindow")->resize(960, 480);
    stage_.shoot("clipboardDataWindow", QStringLiteral("clipboard-window"));
    stage_.saveJob("clipboardDataWindow", u"Prices without their unit");
  }

  void previousJobs() {
    stage_.perform("previousJobsWindowMenuItemActionClicked");
    stage_.set("previousJobsWindowJobsTableView", IndexSet{1});
    stage_.set("previousJobsWindowFilesTableView", IndexSet{0});
    stage_.widget("previousJobsWindow")->resize(900, 520);
    stage_.shoot("previousJobsWindow", QStringLiteral("previous-jobs"));
  }

  Stage stage_;
  QString home_;
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
