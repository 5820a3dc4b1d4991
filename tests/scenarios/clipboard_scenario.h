// What the scenarios of the clipboard data window have in common.
#pragma once

#include <string>
#include <utility>

#include "scenarios/drive_session.h"

namespace quillet::testing {

class ClipboardScenario : public Scenario {
 protected:
  void setPasteboard(const json& text) { done("setPasteboard", {{"text", text}}); }
  json pasteboard() { return done("pasteboard")["text"]; }
  json refresh(const json& text) {
    setPasteboard(text);
    return done("refreshDataFromClipboard");
  }
  json perform(const json& operation) {
    return done("performClipboardDataOperation", {{"operation", operation}});
  }
  json performCode(int code) { return perform({{"Code", code}}); }
  // At "/" and "|".
  json split() { return perform({{"Code", 102}, {"Arg1", "/"}, {"Arg2", "|"}}); }
  void begin(const std::string& text) {
    refresh(text);
    split();
  }
  bool undo() { return done("undo")["done"]; }
  bool redo() { return done("redo")["done"]; }

  json choose(const std::string& action, json arguments = json::object()) {
    arguments["action"] = action;
    return done("menu", std::move(arguments));
  }
  void showClipboardDataWindow() { choose("clipboardDataWindowMenuItemClicked"); }

  // They add to the selection; rows and columns of the grid, from 0.
  void selectLine(int row) { done("click", {{"row", row}, {"column", 0}, {"command", true}}); }
  void selectColumn(int column) { done("headerClick", {{"column", column + 1}, {"command", true}}); }
  void selectCell(int row, int column) {
    done("click", {{"row", row}, {"column", column + 1}, {"command", true}});
  }

  json window() { return done("clipboardDataWindow"); }
  json operations() { return window()["operations"]; }
  // Null when nothing was performed since the last Refresh.
  json lastOperation() {
    const json all = operations();
    return all.empty() ? json() : all.back();
  }
  // Rows between "/", cells between "|".
  std::string grid() {
    std::string result;
    const json shown = window();
    for (const json& row : shown["grid"]) {
      if (&row != &shown["grid"].front()) result += "/";
      for (std::size_t i = 0; i < row.size(); ++i) result += (i ? "|" : "") + row[i].get<std::string>();
    }
    return result;
  }
};

inline json editCell(int row, int column, const std::string& text) {
  return {{"Code", 401}, {"IntArg1", row}, {"IntArg2", column}, {"Arg1", text}};
}

inline json status(const std::string& text, int type = 0) {
  return {{"text", text}, {"type", type}};
}

inline json clipboardSheet(const std::string& title, const std::string& message) {
  return {{"title", title}, {"message", message}, {"sheet", true}, {"window", "clipboardDataWindow"}};
}

}  // namespace quillet::testing
