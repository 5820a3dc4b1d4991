// Keys in the preview's tables. They move the ten rows that are shown over the rows that the stores hold, and
// compute nothing anew.
#pragma once

#include <cstdint>

#include "engine/job_state.h"
#include "shell/preview_panel.h"

namespace quillet {

struct PreviewKeyPress {
  char16_t key = 0;  // the first character without the modifiers
  bool option = false;
  bool command = false;
};

// Main thread only. A preview has at most ten lines, so the rows move only while those of a run are in the
// stores: this is meant.
class PreviewKeys {
 public:
  // Both outlive the object.
  PreviewKeys(PreviewPanel& panel, const JobState& state) : panel_(panel), state_(state) {}

  // False when the key is left to the table's own handling.
  bool keyDown(Table& table, const PreviewKeyPress& press);

  // table is one of the panel's.
  void previewTableViewUpKeyPressed(Table& table);
  void previewTableViewAlternateUpKeyPressed(Table& table);
  void previewTableViewCommandUpKeyPressed(Table& table);
  void previewTableViewDownKeyPressed(Table& table);
  void previewTableViewAlternateDownKeyPressed(Table& table);
  void previewTableViewCommandDownKeyPressed(Table& table);

 private:
  bool upKeyDown(Table& table, const PreviewKeyPress& press);
  bool downKeyDown(Table& table, const PreviewKeyPress& press);
  void startFrom(std::int64_t line);

  PreviewPanel& panel_;
  const JobState& state_;
};

}  // namespace quillet
