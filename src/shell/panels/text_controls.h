// What several panels share under different names: what to trim, what to replace, and separators.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "operations/operation_record.h"
#include "shell/controls.h"

namespace quillet {

// The flag of the case in IntArg1, what in IntArg2, from where in IntArg3, and the text under a key.
class TrimControls {
 public:
  // typeHandler: the command for a change of the trim type, or empty.
  TrimControls(Window& window, const std::string& prefix, const std::string& typeHandler);

  void fill(const OperationRecord& record, std::string_view textKey);
  void write(OperationRecord& record, std::string_view textKey) const;
  std::vector<Control*> all() { return {&what_, &from_, &text_, &caseSensitive_}; }

 private:
  PopUpButton what_;
  PopUpButton from_;
  TextField text_;
  CheckBox caseSensitive_;
};

// The flag of the case in IntArg1, the type in IntArg2, and two texts under their keys.
class ReplaceControls {
 public:
  ReplaceControls(Window& window, const std::string& prefix);

  void fill(const OperationRecord& record, std::string_view whatKey, std::string_view withKey);
  void write(OperationRecord& record, std::string_view whatKey, std::string_view withKey) const;
  std::vector<Control*> all() { return {&type_, &what_, &with_, &caseSensitive_}; }

 private:
  PopUpButton type_;
  TextField what_;
  TextField with_;
  CheckBox caseSensitive_;
};

// The separators of lines under Arg1 and of columns under Arg2: real characters in the record, and as they
// are typed in the boxes.
void fillSeparators(const OperationRecord& record, ComboBox& lineSeparator, ComboBox& columnSeparator);
void writeSeparators(OperationRecord& record, const ComboBox& lineSeparator, const ComboBox& columnSeparator);

}  // namespace quillet
