#include "shell/app_delegate.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/localization.h"

namespace quillet {

namespace {

constexpr const char* kSelectedFileKey = "LastSelectedFileIndex";

JobSurroundings newState(std::shared_ptr<const Folders> folders, std::shared_ptr<UserDefaults> defaults,
                         std::shared_ptr<MainThread> mainThread) {
  JobSurroundings state;
  state.files = std::make_shared<InputFiles>();
  state.state = std::make_shared<JobState>();
  state.log = std::make_shared<JobLog>(folders);
  state.previewStores = std::make_shared<PreviewStores>();
  state.outputFiles = std::make_shared<OutputFiles>();
  state.defaults = std::move(defaults);
  state.folders = std::move(folders);
  state.mainThread = std::move(mainThread);
  return state;
}

}  // namespace

MainWindows::MainWindows(UserInterface& interface)
    : main(interface, nameOf(WindowName::Main), localized(u"Quillet")),
      clipboardData(interface, nameOf(WindowName::ClipboardData), localized(u"Clipboard Data")),
      previousJobs(interface, nameOf(WindowName::PreviousJobs), localized(u"Previous Jobs")),
      preferences(interface, nameOf(WindowName::Preferences), localized(u"Preferences")) {}

AppDelegate::AppDelegate(const Desktop& desktop, std::shared_ptr<const Folders> folders,
                         std::shared_ptr<UserDefaults> defaults, std::shared_ptr<MainThread> mainThread)
    : alerts_(desktop.alerts),
      windowServer_(desktop.windows),
      shared_(newState(std::move(folders), std::move(defaults), std::move(mainThread))),
      database_("quillet.db", shared_.folders->documentsFolder()),
      windows_(interface_),
      fileSelection_(windows_.main, *shared_.files),
      inputFileList_(*shared_.files, fileSelection_, *shared_.log, *shared_.defaults),
      operationTable_(windows_.main, fileSelection_),
      previewPanel_(windows_.main, *shared_.previewStores, fileSelection_, *shared_.defaults),
      previewKeys_(previewPanel_, *shared_.state),
      statusLine_(windows_.main, "statusLabel", "clearStatusLabelButton", "clearStatusLabelButtonClicked"),
      outputFolder_(windows_.main, *shared_.defaults, *shared_.log, desktop),
      logCommands_(*shared_.log, desktop.alerts, desktop.workspace),
      jobController_(windows_.main, shared_,
                     {fileSelection_, outputFolder_, statusLine_, logCommands_, desktop.alerts,
                      desktop.workspace, desktop.application},
                     [this] { previewPanel_.updatePreviewPanel(); }),
      rightSide_(windows_.main, fileSelection_, *shared_.previewStores, previewPanel_, operationTable_,
                 [this] { computePreview(); }),
      fileCommands_(windows_.main, {inputFileList_, fileSelection_, previewPanel_, rightSide_,
                                    operationTable_, desktop.alerts, desktop.panels, desktop.workspace}),
      clipboard_(interface_, windows_.clipboardData, desktop, *shared_.defaults),
      preferencesWindow_(windows_.preferences, windowServer_, *shared_.defaults),
      helpCommands_(desktop.alerts, desktop.workspace),
      menuValidation_(
          {*shared_.log, *shared_.state, *shared_.files, fileSelection_, clipboard_, windowServer_}),
      sessionWindows_({windows_.main, windows_.clipboardData, windows_.previousJobs}, windowServer_,
                      clipboard_, *shared_.defaults),
      previousJobsWindow_(
          interface_, windows_.previousJobs,
          {database_, *shared_.files, fileSelection_, clipboard_, *shared_.state, desktop.alerts,
           desktop.windows, [this] { operationTable_.reloadTable(); }, [this] { computePreview(); }}),
      saveJobWindow_(interface_, windows_.main,
                     {database_, *shared_.files, clipboard_, *shared_.defaults, desktop.windows},
                     [this] { previousJobsWindow_.updatePreviousJobsWindowTables(); }),
      operationEditor_(interface_,
                       {*shared_.files, fileSelection_, operationTable_, previewPanel_, statusLine_,
                        desktop.alerts, desktop.windows},
                       [this] { computePreview(); }) {
  fileSelection_.setChanged([this] {
    rightSide_.updateRightSide();
    operationTable_.updateUIAfterOperationTableViewSelectionDidChange();
  });
  previewPanel_.setRefillJoinColumns([this](const std::vector<ColumnEntry>& columns) {
    operationEditor_.panels().joinColumns().refillJoinColumns(columns);
  });
  addCommands();
}

void AppDelegate::addCommands() {
  Commands& commands = interface_.commands();
  statusLine_.addCommandsTo(commands);
  fileCommands_.addCommandsTo(commands);
  commands.add("quilletWindowMenuItemClicked", [this] { windowServer_.makeKeyAndOrderFront(windows_.main); });
  clipboard_.addCommandsTo(commands);
  helpCommands_.addCommandsTo(commands);
  jobController_.addCommandsTo(commands);
  logCommands_.addCommandsTo(commands);
  operationEditor_.addCommandsTo(commands);
  outputFolder_.addCommandsTo(commands);
  preferencesWindow_.addCommandsTo(commands);
  previewPanel_.addCommandsTo(commands);
  previousJobsWindow_.addCommandsTo(commands);
  saveJobWindow_.addCommandsTo(commands);
}

void AppDelegate::computePreview() {
  jobController_.startPrepFilesThreadInBackground(StartPrep::Preview);
}

// Closed before the groups go: a run cannot reach them any more.
AppDelegate::~AppDelegate() {
  shared_.mainThread->close();
}

void AppDelegate::applicationDidFinishLaunching() {
  if (database_.setupDatabase() != DBInterface::kSuccess)
    alerts_.showAlert(localized(u"Could not setup jobs database"), {});
  previousJobsWindow_.updatePreviousJobsWindowTables();
  inputFileList_.loadLastOpenedFiles();
  restoreSelection();
  sessionWindows_.restore();
}

void AppDelegate::restoreSelection() {
  const auto row = shared_.defaults->integerForKey(kSelectedFileKey);
  if (!shared_.defaults->has(kSelectedFileKey) || row < 0 ||
      row >= static_cast<std::int64_t>(shared_.files->count()))
    return rightSide_.showHelpBox();
  fileSelection_.select(static_cast<std::size_t>(row));
}

void AppDelegate::applicationWillTerminate() {
  inputFileList_.storeLastOpenedFiles();
  storeSelection();
  sessionWindows_.store();
}

void AppDelegate::storeSelection() {
  const auto row = fileSelection_.singleRow();
  shared_.defaults->setValue(kSelectedFileKey, row ? nlohmann::json(*row) : nlohmann::json());
}

bool AppDelegate::windowShouldClose(const Window& window) {
  if (&window == &windows_.preferences) preferencesWindow_.preferencesWindowSaveTextFieldsToDefaults();
  return true;
}

bool AppDelegate::validateMenuItem(std::string_view action) const {
  return menuValidation_.validateMenuItem(action);
}

void AppDelegate::openFiles(const std::vector<std::string>& paths) {
  shared_.defaults->setValue(kSelectedFileKey, nullptr);
  if (!filesToOpen_) filesToOpen_ = paths;
  jobController_.setStartedFromAppIcon();
  inputFileList_.addInputFiles(*filesToOpen_, 0, SelectFiles::Yes, RestoreOperations::No);
}

void AppDelegate::filesFromLaterStart(const std::vector<std::string>& paths) {
  fileCommands_.dropAtEnd(paths);
  windowServer_.makeKeyAndOrderFront(windows_.main);
}

}  // namespace quillet
