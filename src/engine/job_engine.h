// One use of the engine: a run over all input files, or a preview of the one that is selected. A run goes on
// its own thread, a preview on the main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "engine/input_files.h"
#include "engine/job_log.h"
#include "engine/job_state.h"
#include "engine/preview_stores.h"
#include "platform/folders.h"
#include "platform/index_set.h"
#include "platform/main_thread.h"
#include "platform/user_defaults.h"

namespace quillet {

struct JobParameters {
  bool write = false;                       // a run
  std::optional<std::string> outputFolder;  // a run's; its absence is no error here
  IndexSet selectedFileIndexes;             // a preview's: it needs exactly one
};

// All that a use of the engine touches. Shared, so that a run can outlive the program's windows.
struct JobSurroundings {
  std::shared_ptr<InputFiles> files;
  std::shared_ptr<JobState> state;
  std::shared_ptr<JobLog> log;
  std::shared_ptr<PreviewStores> previewStores;
  std::shared_ptr<OutputFiles> outputFiles;
  std::shared_ptr<UserDefaults> defaults;
  std::shared_ptr<const Folders> folders;
  std::shared_ptr<MainThread> mainThread;
  // Called on the main thread.
  std::function<void()> updatePreviewPanel;     // at the end of a preview
  std::function<void()> updateUIAfterPrep;      // at the end of a run, which waits for it
  std::function<void()> hideProgressIndicator;  // after that, without waiting
};

void prepFiles(const JobParameters& parameters, const JobSurroundings& surroundings);

}  // namespace quillet
