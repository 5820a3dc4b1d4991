// A home that nobody lives in, for pictures of the windows and for tests.
#pragma once

#include <string>
#include <utility>

#include "platform/folders.h"

namespace quillet::ui {

class TemporaryFolders final : public Folders {
 public:
  explicit TemporaryFolders(std::string home) : home_(std::move(home)) {}
  std::optional<std::string> documentsFolder() const override {
    std::string folder = home_ + "/Documents";
    return makeFolders(folder) ? std::optional(folder) : std::nullopt;
  }
  std::string temporaryParentFolder() const override { return home_ + "/tmp"; }
  std::string defaultsFile() const override { return home_ + "/defaults.json"; }

 private:
  std::string home_;
};

}  // namespace quillet::ui
