#include "ui/screenshots.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <fstream>
#include <nlohmann/json.hpp>

#include "operations/operation_codes.h"
#include "shell/operation_json.h"
#include "ui/grid_view.h"
#include "ui/stage.h"
#include "ui/temporary_folders.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

using Setting = Stage::Setting;

constexpr const char* kFiles[] = {"customers.csv", "orders.txt", "stock.csv"};
const char* const kClipboard =
    "A-100;bolt;0.10;EUR;2024-01-10\nA-107;nut;1.13;EUR\nA-114;washer;2.16;EUR;2024-03-12\nA-121;bracket\n"
    "A-128;hinge;4.22;EUR;2024-05-14\nA-135;rivet;5.25;EUR;2024-06-15\nA-142;bolt M6, brass;6.28;EUR";

// A panel, and what is set in it.
struct Panel {
  std::int64_t code;
  const char* window;
  const char* picture;
  std::vector<Setting> settings;
};

std::u16string text(const char16_t* literal) {
  return literal;
}

const std::vector<Panel>& linePanels() {
  static const std::vector<Panel> panels = {
      {OpReplaceCharacter,
       "replaceCharacterOperationWindow",
       "replaceCharacterOperationWindow",
       {{"WhatTextField", text(u"\\t")}, {"WithTextField", text(u" ")}}},
      {OpSkipLine,
       "skipLineOperationWindow",
       "skipLineOperationWindow",
       {{"SkipIfPopUpButton", std::int64_t{2}}, {"TextField", text(u"1, 2, 5 - 8")}}},
      {OpTrimLine,
       "trimLineOperationWindow",
       "trimLineOperationWindow",
       {{"TrimWhatPopUpButton", std::int64_t{1}}, {"TextField", text(u"#;")}}},
      {OpReplaceLine,
       "replaceLineOperationWindow",
       "replaceLineOperationWindow",
       {{"TypePopUpButton", std::int64_t{1}},
        {"WhatTextField", text(u"(\\d+),(\\d+)")},
        {"WithTextField", text(u"$1.$2")},
        {"CaseSensitiveButton", true}}},
      {OpJoinLines,
       "joinLinesOperationWindow",
       "joinLinesOperationWindow",
       {{"NumberToJoinTextField", text(u"2")}, {"SeparatorTextField", text(u"; ")}}},
      {OpSetInitialNumberOfColumns,
       "setNumberOfColumnsOperationWindow",
       "setNumberOfColumnsOperationWindow",
       {}},
  };
  return panels;
}

const std::vector<Panel>& columnPanels() {
  static const std::vector<Panel> panels = {
      {OpTrimColumn, "trimColumnOperationWindow", "trimColumnOperationWindow-none", {}},
      {OpTrimColumn,
       "trimColumnOperationWindow",
       "trimColumnOperationWindow",
       {{"ColumnsTableView", IndexSet{0, 1}}}},
      {OpReplaceColumn,
       "replaceColumnOperationWindow",
       "replaceColumnOperationWindow",
       {{"ColumnsTableView", IndexSet{2}}, {"WhatTextField", text(u"@")}}},
      {OpReformatColumn,
       "reformatColumnOperationWindow",
       "reformatColumnOperationWindow-date",
       {{"ColumnsTableView", IndexSet{6}}, {"ReformatAsPopUpButton", std::int64_t{1}}}},
      {OpReformatColumn,
       "reformatColumnOperationWindow",
       "reformatColumnOperationWindow-dateTime",
       {{"ColumnsTableView", IndexSet{6}}, {"ReformatAsPopUpButton", std::int64_t{3}}}},
      {OpReformatColumn,
       "reformatColumnOperationWindow",
       "reformatColumnOperationWindow-number",
       {{"ColumnsTableView", IndexSet{8}},
        {"ReformatAsPopUpButton", std::int64_t{5}},
        {"UseInvalidStringButton", true},
        {"InvalidString", text(u"unknown")}}},
      {OpRearrangeColumns,
       "rearrangeColumnsOperationWindow",
       "rearrangeColumnsOperationWindow",
       {{"ColumnsTableView", IndexSet{1}}}},
      {OpJoinColumns,
       "joinColumnsOperationWindow",
       "joinColumnsOperationWindow",
       {{"ColumnsTableView", IndexSet{0, 1}}, {"SeparatorTextField", text(u" - ")}}},
  };
  return panels;
}

// The sheets over the grid, by the command that opens them.
struct GridSheet {
  const char* command;
  const char* window;
  std::vector<Setting> settings;
};

const std::vector<GridSheet>& gridSheets() {
  static const std::vector<GridSheet> sheets = {
      {"clipboardDataWindowSplitButtonPressed", "clipboardDataSplitWindow", {}},
      {"clipboardDataWindowJoinButtonPressed",
       "clipboardDataJoinWindow",
       {{"LineSeparatorComboBox", text(u"\\n")}, {"ColumnSeparatorComboBox", text(u"\\t")}}},
      {"clipboardDataWindowTrimButtonPressed",
       "clipboardDataTrimWindow",
       {{"TrimWhatPopUpButton", std::int64_t{2}}}},
      {"clipboardDataWindowReplaceButtonPressed",
       "clipboardDataReplaceWindow",
       {{"WhatTextField", text(u".")}, {"WithTextField", text(u",")}}},
      {"clipboardDataWindowFillButtonPressed",
       "clipboardDataFillWindow",
       {{"TypePopUpButton", std::int64_t{1}}, {"WithTextField", text(u"10,5")}}},
      {"rowsTableViewReturnKeyPressed", "cellDetailsWindow", {}},
  };
  return sheets;
}

class Photographer {
 public:
  Photographer(QuilletApplication& quillet, const QString& folder, const QString& scheme)
      : stage_(quillet, folder, QLatin1Char('-') + scheme) {}

  bool takeAll() {
    mainWindow();
    operationPanels();
    clipboardWindow();
    jobsWindow();
    stage_.perform("preferencesMenuItemClicked");
    stage_.shoot("preferencesWindow", QStringLiteral("preferencesWindow"));
    return stage_.allWritten();
  }

 private:
  AppDelegate& application() { return stage_.application(); }

  void shootMenu(const char* window, const char* button, const QString& name) {
    auto* pressed = stage_.widget(window)->findChild<QWidget*>(QLatin1String(button));
    QMenu* menu = pressed ? pressed->findChild<QMenu*>() : nullptr;
    if (!menu) return stage_.fail();
    menu->popup(pressed->mapToGlobal(QPoint(0, pressed->height())));
    stage_.shoot(menu, name);
    menu->close();
  }

  void mainWindow() {
    stage_.set("previewTypePopUpButton", std::int64_t{0});
    stage_.shoot("window", QStringLiteral("window-inputText"));
    stage_.set("previewTypePopUpButton", kOutputAsTable);
    application().operationTable().table().userSelects(IndexSet{4});
    stage_.shoot("window", QStringLiteral("window"));
    shootMenu("window", "addOperationButton", QStringLiteral("menu-addOperation"));
    stage_.selectFiles(IndexSet{0, 2});
    stage_.shoot("window", QStringLiteral("window-severalFiles"));
    stage_.perform("runButtonPressed");
    stage_.shootDialog(QStringLiteral("outputFolder"));
    stage_.selectFiles({});
    stage_.shoot("window", QStringLiteral("window-noFile"));
    stage_.selectFiles(IndexSet{0});
    stage_.perform("saveJobMenuItemClicked");
    stage_.shootSheet("saveJobWindow", QStringLiteral("saveJobWindow"));
    stage_.saveJob("window", u"Clean customers");
  }

  void editOperation(std::int64_t row, const char* window) {
    application().operationTable().table().userSelects(IndexSet{row});
    stage_.perform("showOperationWindow");
    stage_.shootSheet(window, QLatin1String(window));
  }

  void operationPanels() {
    const auto operations = application().shared().files->all().front()->operations.value_or(OperationList());
    editOperation(0, "initialOperationsWindow");
    editOperation(static_cast<std::int64_t>(operations.size()) - 1, "finalOperationsWindow");
    for (const auto* panels : {&linePanels(), &columnPanels()})
      for (const Panel& panel : *panels) {
        application().operationEditor().showPanelForAdding(panel.code);
        stage_.fill(panel.window, panel.settings);
        stage_.shootSheet(panel.window, QLatin1String(panel.picture));
      }
  }

  void clipboardWindow() {
    QApplication::clipboard()->setText(QLatin1String(kClipboard));
    stage_.perform("clipboardDataWindowMenuItemClicked");
    stage_.shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow-help"));
    stage_.perform("clipboardDataWindowRefreshNowButtonPressed");
    stage_.shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow-text"));
    stage_.performSheet("clipboardDataWindowSplitButtonPressed", "clipboardDataSplitWindow",
                        {{"SplitClipboardIntoLinesCheckbox", true},
                         {"LineSeparatorComboBox", text(u"\\n")},
                         {"SplitLinesIntoColumnsCheckbox", true},
                         {"ColumnSeparatorComboBox", text(u";")}});
    ClipboardGroup& clipboard = application().clipboard();
    clipboard.table().didClickTableColumn(3, {});
    stage_.performSheet("clipboardDataWindowTrimButtonPressed", "clipboardDataTrimWindow",
                        {{"TrimWhatPopUpButton", std::int64_t{2}}});
    clipboard.table().mouseDown(3, 3, 1, {});
    QApplication::processEvents();
    QApplication::setActiveWindow(stage_.widget("clipboardDataWindow"));
    stage_.widget("clipboardDataWindow")->findChild<GridView*>()->setFocus();
    stage_.shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow"));
    stage_.widget("clipboardDataWindow")
        ->findChild<QToolButton*>(QStringLiteral("clipboardDataWindowRefreshToolbarItem"))
        ->setFocus();
    stage_.shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow-unfocused"));
    shootMenu("clipboardDataWindow", "clipboardDataWindowPerformToolbarItem", QStringLiteral("menu-perform"));
    clipboard.table().mouseDown(6, 2, 1, {});
    for (const GridSheet& sheet : gridSheets()) {
      stage_.perform(sheet.command);
      stage_.fill(sheet.window, sheet.settings);
      stage_.shootSheet(sheet.window, QLatin1String(sheet.window));
    }
    stage_.perform("clipboardDataWindowJoinColumnsMenuItemClicked");
    stage_.shootDialog(QStringLiteral("prompt"));
    stage_.saveJob("clipboardDataWindow", u"Prices without their unit");
  }

  void jobsWindow() {
    stage_.perform("previousJobsWindowMenuItemActionClicked");
    stage_.shoot("previousJobsWindow", QStringLiteral("previousJobsWindow-none"));
    stage_.set("previousJobsWindowJobsTableView", IndexSet{1});
    stage_.set("previousJobsWindowFilesTableView", IndexSet{0});
    stage_.shoot("previousJobsWindow", QStringLiteral("previousJobsWindow"));
    stage_.perform("deleteJobsButtonClicked");
    stage_.shootDialog(QStringLiteral("alert"));
    jobFileSheet();
  }

  // It comes for jobs of older versions only, of which none is saved here.
  void jobFileSheet() {
    dynamic_cast<Label&>(*application().interface().control("previousJobFileWindowFilePathLabel"))
        .setText(u16String(QStringLiteral("/home/ada/Documents/customers.csv")));
    QWidget* sheet = stage_.widget("previousJobFileWindow");
    sheet->adjustSize();
    stage_.shoot(sheet, QStringLiteral("previousJobFileWindow"));
  }

  Stage stage_;
};

// The sample files, the first with the operations that clean it.
void launchWithSamples(QuilletApplication& quillet, const QString& samples) {
  std::vector<std::string> paths;
  for (const char* name : kFiles)
    paths.push_back(QFile::encodeName(samples + QLatin1Char('/') + QLatin1String(name)).toStdString());
  quillet.launch(paths);
  std::ifstream file(QFile::encodeName(samples + QStringLiteral("/clean-customers.json")).toStdString());
  const auto operations = operationsFromJson(nlohmann::json::parse(file, nullptr, false));
  if (!operations) return;
  AppDelegate& application = quillet.application();
  // What the sample's operations look for.
  application.shared().defaults->setValue("DecodeErrorReplacement", "\ufffd");
  application.inputFileList().setOperations(0, *operations);
  application.fileSelection().select(0);
}

bool takeIn(QApplication& application, Scheme scheme, const QString& samples, const QString& folder) {
  const QTemporaryDir home;
  applyTheme(application, scheme);
  QuilletApplication quillet(std::make_shared<TemporaryFolders>(home.path().toStdString()));
  launchWithSamples(quillet, samples);
  return Photographer(quillet, folder,
                      scheme == Scheme::Dark ? QStringLiteral("dark") : QStringLiteral("light"))
      .takeAll();
}

}  // namespace

bool writeScreenshots(QApplication& application, const QString& samples, const QString& folder) {
  if (!QDir().mkpath(folder)) return false;
  const bool light = takeIn(application, Scheme::Light, samples, folder);
  return takeIn(application, Scheme::Dark, samples, folder) && light;
}

}  // namespace quillet::ui
