#include "shell/output_folder.h"

#include <nlohmann/json.hpp>

#include "platform/folders.h"
#include "platform/localization.h"
#include "platform/unicode_text.h"
#include "shell/bookmarks.h"

namespace quillet {

namespace {

constexpr const char* kBookmarkKey = "OutputFolderBookmark";

}  // namespace

OutputFolder::OutputFolder(Window& window, UserDefaults& defaults, JobLog& log, const Desktop& desktop)
    : defaults_(defaults),
      log_(log),
      alerts_(desktop.alerts),
      panels_(desktop.panels),
      workspace_(desktop.workspace),
      selectButton_(window, "selectOutputFolderButton", localized(u"Output Folder…"),
                    "selectOutputFolderMenuItemClicked") {
  updateToolTip();
}

void OutputFolder::addCommandsTo(Commands& commands) {
  commands.add("selectOutputFolderMenuItemClicked", [this] { selectOutputFolder(); });
  commands.add("showOutputFolderMenuItemClicked", [this] { showOutputFolderMenuItemClicked(); });
}

void OutputFolder::selectOutputFolder() {
  const std::u16string title = localized(u"Select Output Folder");
  panels_.chooseFolder(title, title, [this](const std::vector<std::string>& paths) { store(paths); });
}

void OutputFolder::store(const std::vector<std::string>& paths) {
  if (paths.empty()) return alerts_.showAlert(localized(u"Nothing selected"), {});
  const std::string& path = paths.front();
  if (path.empty()) return alerts_.showAlert(localized(u"Output folder was nil"), {});
  const auto bookmark = isFolder(path) ? bookmarkFromPath(path) : std::nullopt;
  if (!bookmark) {
    return alerts_.showAlert(localized(u"Error invalid bookmark to folder"),
                             localized(u"Output folder bookmark was invalid"));
  }
  defaults_.setValue(kBookmarkKey, *bookmark);
  updateToolTip();
}

void OutputFolder::updateToolTip() {
  const auto path = pathFromBookmark(defaults_.value(kBookmarkKey));
  selectButton_.setToolTip(path ? toUtf16(*path) : localized(u"No output folder chosen yet"));
}

void OutputFolder::showOutputFolderMenuItemClicked() {
  const auto folder = resolve();
  if (!folder) return;
  if (!folder->path) return log_.addToImportLog(LogWarning, folder->problem);
  workspace_.reveal({*folder->path});
}

std::optional<OutputFolder::Resolved> OutputFolder::resolve() const {
  const nlohmann::json bookmark = defaults_.value(kBookmarkKey);
  if (bookmark.is_null()) return std::nullopt;
  auto path = pathFromBookmark(bookmark);
  if (!path) {
    const std::u16string reason = localized(u"Output folder bookmark URL was invalid");
    return Resolved{{}, localizedFormat(u"Invalid bookmark URL to folder [%@]", {reason})};
  }
  // The second placeholder of these two has no value, which is meant.
  if (!fileExists(*path))
    return Resolved{{}, localizedFormat(u"Output folder does not exist \"%@\" [%@]", {toUtf16(*path)})};
  if (!isFolder(*path))
    return Resolved{{}, localizedFormat(u"Output URL is not a folder \"%@\" [%@]", {toUtf16(*path)})};
  return Resolved{std::move(path), {}};
}

}  // namespace quillet
