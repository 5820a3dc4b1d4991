#include "ui/screenshots.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QPixmap>
#include <QTemporaryDir>
#include <fstream>
#include <nlohmann/json.hpp>

#include "operations/operation_codes.h"
#include "shell/operation_json.h"
#include "ui/quillet_application.h"
#include "ui/temporary_folders.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr std::int64_t kPanels[] = {OpReplaceCharacter, OpSkipLine,       OpTrimLine,
                                    OpReplaceLine,      OpJoinLines,      OpTrimColumn,
                                    OpReplaceColumn,    OpReformatColumn, OpSetInitialNumberOfColumns,
                                    OpRearrangeColumns, OpJoinColumns};

constexpr int kOutputAsTable = 2;

class Photographer {
 public:
  Photographer(QuilletApplication& quillet, QString folder, QString scheme)
      : quillet_(quillet), folder_(std::move(folder)), scheme_(std::move(scheme)) {}

  bool takeAll() {
    mainWindow();
    operationPanels();
    clipboardWindow();
    otherWindows();
    return allWritten_;
  }

 private:
  AppDelegate& application() { return quillet_.application(); }
  void perform(const char* command) { application().interface().commands().perform(command); }

  void shoot(std::string_view window, const QString& name) {
    QApplication::processEvents();
    QWidget* widget = quillet_.windows().widget(window);
    allWritten_ = widget && widget->grab().save(QStringLiteral("%1/%2-%3.png").arg(folder_, name, scheme_)) &&
                  allWritten_;
  }

  void shootOpenSheets() {
    for (Window* window : application().interface().windows()) {
      if (!window->sheetParent() || !window->isShown()) continue;
      shoot(window->name(), QString::fromStdString(window->name()));
      window->cancelButton()->press();
    }
  }

  void mainWindow() {
    static_cast<PopUpButton*>(application().interface().control("previewTypePopUpButton"))
        ->userSelects(kOutputAsTable);
    shoot("window", QStringLiteral("window"));
    for (const char* command : {"saveJobMenuItemClicked"}) {
      perform(command);
      shootOpenSheets();
    }
  }

  void operationPanels() {
    const auto operations = application().shared().files->all().front()->operations.value_or(OperationList());
    const auto last = static_cast<std::int64_t>(operations.size()) - 1;
    for (const std::int64_t row : {std::int64_t{0}, last}) {
      application().operationTable().table().userSelects(IndexSet{row});
      perform("showOperationWindow");
      shootOpenSheets();
    }
    for (const std::int64_t code : kPanels) {
      application().operationEditor().showPanelForAdding(code);
      shootOpenSheets();
    }
  }

  void fillSplitSheet() {
    Window* sheet = application().interface().window("clipboardDataSplitWindow");
    const auto set = [&](const char* name, const auto& value) {
      Control* control = sheet->control(std::string("clipboardDataSplitWindow") + name);
      if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>)
        static_cast<CheckBox*>(control)->userSets(value);
      else
        static_cast<TextField*>(control)->userTypes(value);
    };
    set("SplitClipboardIntoLinesCheckbox", true);
    set("SplitLinesIntoColumnsCheckbox", true);
    set("LineSeparatorComboBox", u"\\n");
    set("ColumnSeparatorComboBox", u",");
    sheet->doneButton()->press();
  }

  void clipboardWindow() {
    QApplication::clipboard()->setText(
        QStringLiteral("A-100,bolt,0.10,EUR,2024-01-10\nA-107,nut,1.13,EUR\nA-114,washer,2.16,EUR,2024-03-"
                       "12\nA-121,bracket\n"
                       "A-128,hinge,4.22,EUR,2024-05-14"));
    perform("clipboardDataWindowMenuItemClicked");
    shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow-help"));
    perform("clipboardDataWindowRefreshNowButtonPressed");
    shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow-text"));
    ClipboardGroup& clipboard = application().clipboard();
    perform("clipboardDataWindowSplitButtonPressed");
    fillSplitSheet();
    clipboard.table().mouseDown(1, 3, 1, {});
    clipboard.table().didClickTableColumn(3, {});
    shoot("clipboardDataWindow", QStringLiteral("clipboardDataWindow"));
    for (const char* command :
         {"clipboardDataWindowSplitButtonPressed", "clipboardDataWindowJoinButtonPressed",
          "clipboardDataWindowTrimButtonPressed", "clipboardDataWindowReplaceButtonPressed",
          "clipboardDataWindowFillButtonPressed", "rowsTableViewReturnKeyPressed"}) {
      perform(command);
      shootOpenSheets();
    }
  }

  void otherWindows() {
    perform("previousJobsWindowMenuItemActionClicked");
    shoot("previousJobsWindow", QStringLiteral("previousJobsWindow"));
    perform("preferencesMenuItemClicked");
    shoot("preferencesWindow", QStringLiteral("preferencesWindow"));
  }

  QuilletApplication& quillet_;
  QString folder_;
  QString scheme_;
  bool allWritten_ = true;
};

// The sample file with the operations that clean it.
void launchWithSample(QuilletApplication& quillet, const QString& samples) {
  quillet.launch({QFile::encodeName(samples + QStringLiteral("/customers.csv")).toStdString()});
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
  launchWithSample(quillet, samples);
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
