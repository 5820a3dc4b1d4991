// Bookmarks: how settings keep the place of a file or folder. A bookmark is the text of a file URL.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace quillet {

// Nothing for a path that is not absolute. The file need not exist.
std::optional<std::string> bookmarkFromPath(const std::string& path);

// Nothing for a value of the settings that is no file URL. An absolute path, as a hand might have written it
// there, stands for itself.
std::optional<std::string> pathFromBookmark(const nlohmann::json& bookmark);

}  // namespace quillet
