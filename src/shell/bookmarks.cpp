#include "shell/bookmarks.h"

#include <nlohmann/json.hpp>

#include "platform/folders.h"

namespace quillet {

std::optional<std::string> bookmarkFromPath(const std::string& path) {
  std::string url = fileUrlFromPath(path);
  if (url.empty()) return std::nullopt;
  return url;
}

std::optional<std::string> pathFromBookmark(const nlohmann::json& bookmark) {
  if (!bookmark.is_string()) return std::nullopt;
  const auto& text = bookmark.get_ref<const std::string&>();
  if (text.starts_with('/')) return text;
  return pathFromFileUrl(text);
}

}  // namespace quillet
