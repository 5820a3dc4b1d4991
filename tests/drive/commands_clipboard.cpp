// The clipboard, and the window that works on its text.
#include <map>

#include "drive/command_table.h"
#include "drive/json_values.h"
#include "drive/sheets.h"
#include "shell/operation_json.h"

namespace quillet::drive {

namespace {

ClipboardGroup& clipboard(Drive& drive) {
  return drive.launchedApplication().clipboard();
}

json setPasteboard(Drive& drive, const Arguments& arguments) {
  drive.desktop().setPasteboard(arguments.has("text") ? std::optional(arguments.text("text")) : std::nullopt);
  return json::object();
}

json pasteboard(Drive& drive, const Arguments&) {
  const std::optional<std::u16string> text = drive.desktop().readString();
  return {{"text", text ? jsonText(*text) : json()}};
}

json refreshDataFromClipboard(Drive& drive, const Arguments&) {
  clipboard(drive).refreshDataFromClipboard();
  return json::object();
}

json performClipboardDataOperation(Drive& drive, const Arguments& arguments) {
  clipboard(drive).performClipboardDataOperation(arguments.operation("operation"));
  return json::object();
}

json undo(Drive& drive, const Arguments&) {
  return {{"done", clipboard(drive).undo()}};
}

json redo(Drive& drive, const Arguments&) {
  return {{"done", clipboard(drive).redo()}};
}

ClickModifiers modifiersOf(const Arguments& arguments) {
  return {arguments.boolean("shift", false), arguments.boolean("command", false),
          arguments.boolean("alternate", false)};
}

json click(Drive& drive, const Arguments& arguments) {
  ClipboardTable& table = clipboard(drive).table();
  const SheetWatch watch(drive);
  table.mouseDown(arguments.integer("row"), arguments.integer("column"), arguments.integer("count", 1),
                  modifiersOf(arguments));
  return {{"opened", finishOpenedSheet(drive, watch, arguments)}};
}

json headerClick(Drive& drive, const Arguments& arguments) {
  clipboard(drive).table().didClickTableColumn(arguments.integer("column"), modifiersOf(arguments));
  return json::object();
}

GridKey keyNamed(const std::string& name) {
  static const std::map<std::string, GridKey> keys = {
      {"up", GridKey::Up},         {"down", GridKey::Down},    {"left", GridKey::Left},
      {"right", GridKey::Right},   {"tab", GridKey::Tab},      {"backtab", GridKey::BackTab},
      {"return", GridKey::Return}, {"delete", GridKey::Delete}};
  const auto key = keys.find(name);
  if (key == keys.end()) throw CommandError("the grid has no meaning for the key " + name);
  return key->second;
}

json key(Drive& drive, const Arguments& arguments) {
  ClipboardTable& table = clipboard(drive).table();
  const GridKey pressed = keyNamed(arguments.string("key"));
  const SheetWatch watch(drive);
  table.keyDown(pressed, arguments.boolean("shift", false), arguments.boolean("alternate", false));
  return {{"opened", finishOpenedSheet(drive, watch, arguments, WithoutValues::Cancel)}};
}

json selectAll(Drive& drive, const Arguments&) {
  clipboard(drive).table().rowsTableViewSelectAllMenuItemClicked();
  return json::object();
}

json jsonGrid(const ClipboardGrid& grid) {
  json rows = json::array();
  grid.forEachRow([&rows](const ClipboardRow& row) {
    json cells = json::array();
    for (std::size_t column = 0; column < row.cellCount(); ++column)
      cells.push_back(jsonText(row.cell(column)));
    rows.push_back(std::move(cells));
  });
  return rows;
}

// The text and the grid lie over the help, which is never hidden.
const char* shownIn(ClipboardDataWindow& window) {
  if (!window.table().table().isHidden()) return "grid";
  return window.textView().isHidden() ? "help" : "text";
}

void addData(json& result, const ClipboardData& data) {
  const ClipboardSelection& selection = data.selection();
  result["grid"] = jsonGrid(data.clipboardDataArray());
  result["string"] = data.hasClipboardDataString() ? jsonText(data.clipboardDataString()) : json();
  result["selection"] = jsonText(selection.selected2DIndexSet().stringPlus1FromAllIndexes());
  result["focus"] = {selection.focusedRowIndex(), selection.focusedColumnIndex()};
  result["operations"] = jsonFromOperations(data.clipboardDataOperationsArray());
  result["undoActionName"] = jsonText(data.undoManager().undoActionName());
  result["canUndo"] = data.undoManager().canUndo();
  result["canRedo"] = data.undoManager().canRedo();
}

void addShown(json& result, ClipboardDataWindow& window) {
  const StatusLine& status = window.statusLine();
  result["title"] = jsonText(window.table().table().window().title());
  result["status"] = {{"text", jsonText(status.text())}, {"type", status.type()}};
  result["shown"] = shownIn(window);
  result["text"] = jsonText(window.textView().text());
  result["columns"] = window.dataColumnCount();
  result["performEnabled"] = window.performItem().isEnabled();
  result["joinEnabled"] = window.joinItem().isEnabled();
}

json clipboardDataWindow(Drive& drive, const Arguments&) {
  ClipboardGroup& group = clipboard(drive);
  json result = json::object();
  addData(result, group.data());
  addShown(result, group.window());
  return result;
}

constexpr Command kCommands[] = {
    {"setPasteboard", setPasteboard},
    {"pasteboard", pasteboard},
    {"refreshDataFromClipboard", refreshDataFromClipboard},
    {"performClipboardDataOperation", performClipboardDataOperation},
    {"undo", undo},
    {"redo", redo},
    {"click", click},
    {"headerClick", headerClick},
    {"key", key},
    {"selectAll", selectAll},
    {"clipboardDataWindow", clipboardDataWindow},
};

}  // namespace

std::span<const Command> clipboardCommands() {
  return kCommands;
}

}  // namespace quillet::drive
