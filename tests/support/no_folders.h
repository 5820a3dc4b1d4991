// A user without any folder.
#pragma once

#include <optional>
#include <string>

#include "platform/folders.h"

namespace quillet::testing {

class NoFolders final : public Folders {
 public:
  std::optional<std::string> documentsFolder() const override { return std::nullopt; }
  std::string temporaryParentFolder() const override { return {}; }
  std::string defaultsFile() const override { return {}; }
};

}  // namespace quillet::testing
