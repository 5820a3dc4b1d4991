// A whole application in a home of its own, over a desktop that writes down what it is asked.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/app_delegate.h"
#include "shell/recording_desktop.h"
#include "support/temporary_folder.h"

namespace quillet::testing {

class FoldersIn final : public Folders {
 public:
  explicit FoldersIn(std::string home) : home_(std::move(home)) {}
  std::optional<std::string> documentsFolder() const override {
    std::string folder = home_ + "/Documents";
    if (!makeFolders(folder)) return std::nullopt;
    return folder;
  }
  std::string temporaryParentFolder() const override { return home_ + "/tmp"; }
  std::string defaultsFile() const override { return home_ + "/defaults.json"; }

 private:
  std::string home_;
};

class ApplicationTest : public ::testing::Test {
 protected:
  AppDelegate& application() {
    if (!application_)
      application_ = std::make_unique<AppDelegate>(
          desktop_.desktop(), std::make_shared<FoldersIn>(home_.path()),
          std::make_shared<UserDefaults>(home_.path("defaults.json")), std::make_shared<MainThread>());
    return *application_;
  }

  void add(const std::vector<std::string>& paths) {
    application().inputFileList().addInputFiles(paths, application().inputFileList().count(), SelectFiles::No,
                                                RestoreOperations::No);
  }
  std::vector<std::string> listedPaths() {
    std::vector<std::string> result;
    for (const auto& file : application().shared().files->all()) result.push_back(file->filePathOrEmpty());
    return result;
  }
  IndexSet selectedRows() { return application().fileSelection().rows(); }
  bool perform(const char* command) { return application().interface().commands().perform(command); }

  TemporaryFolder home_;
  RecordingDesktop desktop_;

 private:
  std::unique_ptr<AppDelegate> application_;
};

}  // namespace quillet::testing
