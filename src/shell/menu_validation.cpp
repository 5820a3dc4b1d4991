#include "shell/menu_validation.h"

#include <algorithm>
#include <iterator>

namespace quillet {

namespace {

// All that decides; asked anew for each item.
struct Facts {
  bool logHasEntries = false;
  bool runningJob = false;  // set by nothing, so its tests always pass: they are kept, which is meant
  bool hasInputFiles = false;
  bool hasSelectedFile = false;
  bool mainIsKey = false;
  bool clipboardDataIsKey = false;
  ClipboardWorkbench::Content grid;
};

struct Row {
  std::string_view action;
  bool (*isEnabled)(const Facts& facts);
};

// Whichever window is key.
constexpr Row kRows[] = {
    {"clearLogMenuItemClicked", [](const Facts& f) { return f.logHasEntries && !f.runningJob; }},
    {"removeSelectedInputFilesMenuItemClicked",
     [](const Facts& f) { return f.hasSelectedFile && !f.runningJob && f.mainIsKey; }},
    {"addInputFileMenuItemClicked", [](const Facts& f) { return !f.runningJob && f.mainIsKey; }},
    {"runButtonPressed", [](const Facts& f) { return f.hasInputFiles && !f.runningJob && f.mainIsKey; }},
    {"saveJobMenuItemClicked",
     [](const Facts& f) {
       return (f.hasInputFiles && !f.runningJob && f.mainIsKey) || f.clipboardDataIsKey;
     }},
};

bool hasRows(const Facts& f) {
  return f.grid.hasRows;
}
bool hasSelection(const Facts& f) {
  return f.grid.hasSelection;
}
bool hasSelectedRows(const Facts& f) {
  return f.grid.selectedRowCount != 0;
}
bool hasSelectedColumns(const Facts& f) {
  return f.grid.selectedColumnCount != 0;
}
bool hasSeveralSelectedRows(const Facts& f) {
  return f.grid.selectedRowCount > 1;
}
bool hasSeveralSelectedColumns(const Facts& f) {
  return f.grid.selectedColumnCount > 1;
}

// While the clipboard data window is key.
constexpr Row kGridRows[] = {
    {"clipboardDataWindowTrimButtonPressed", hasSelection},
    {"clipboardDataWindowReplaceButtonPressed", hasSelection},
    {"clipboardDataWindowFillButtonPressed", hasSelection},
    {"clipboardDataWindowMoveUpMenuItemClicked", hasSelectedRows},
    {"clipboardDataWindowMoveDownMenuItemClicked", hasSelectedRows},
    {"clipboardDataWindowDeleteSelectedLineMenuItemClicked", hasSelectedRows},
    {"clipboardDataWindowMoveLeftMenuItemClicked", hasSelectedColumns},
    {"clipboardDataWindowMoveRightMenuItemClicked", hasSelectedColumns},
    {"clipboardDataWindowDeleteSelectedColumnMenuItemClicked", hasSelectedColumns},
    {"clipboardDataWindowMergeUpMenuItemClicked", hasSeveralSelectedRows},
    {"clipboardDataWindowMergeDownMenuItemClicked", hasSeveralSelectedRows},
    {"clipboardDataWindowMergeLeftMenuItemClicked", hasSeveralSelectedColumns},
    {"clipboardDataWindowMergeRightMenuItemClicked", hasSeveralSelectedColumns},
    {"clipboardDataWindowJoinColumnsMenuItemClicked", hasRows},
    {"clipboardDataWindowJoinRowsMenuItemClicked", hasRows},
    {"clipboardDataWindowShiftTruncateTopMenuItemClicked", hasRows},
    {"clipboardDataWindowShiftTruncateLeftMenuItemClicked", hasRows},
    {"clipboardDataWindowShiftTruncateRightMenuItemClicked", hasRows},
    {"clipboardDataWindowShiftTruncateBottomMenuItemClicked", hasRows},
    {"flipVerticalMenuItemClicked", hasRows},
    {"flipHorizontalMenuItemClicked", hasRows},
    {"flipDiagonalMenuItemClicked", hasRows},
};

Facts factsOf(const MenuValidation::Sources& sources) {
  Facts facts;
  facts.logHasEntries = !sources.log.isEmpty();
  facts.runningJob = sources.state.runningJob;
  facts.hasInputFiles = sources.files.count() != 0;
  facts.hasSelectedFile = !sources.selection.rows().isEmpty();
  facts.mainIsKey = sources.windows.isKey(WindowName::Main);
  facts.clipboardDataIsKey = sources.windows.isKey(WindowName::ClipboardData);
  facts.grid = sources.clipboard.content();
  return facts;
}

template <std::size_t count>
const Row* rowOf(const Row (&table)[count], std::string_view action) {
  const auto* found =
      std::find_if(std::begin(table), std::end(table), [&](const Row& row) { return row.action == action; });
  return found == std::end(table) ? nullptr : found;
}

}  // namespace

bool MenuValidation::validateMenuItem(std::string_view action) const {
  const Facts facts = factsOf(sources_);
  if (const Row* row = rowOf(kRows, action)) return row->isEnabled(facts);
  if (!facts.clipboardDataIsKey) return true;
  const Row* row = rowOf(kGridRows, action);
  return !row || row->isEnabled(facts);
}

}  // namespace quillet
