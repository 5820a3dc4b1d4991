// The table of operations of what is selected in the list of input files.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "operations/operation_record.h"
#include "shell/file_selection.h"

namespace quillet {

// Main thread only. selection outlives the table.
class OperationTable {
 public:
  explicit OperationTable(const FileSelection& selection) : selection_(selection) {}

  // With several files selected, the first one's initial and final operation speak for all; taken when the
  // selection changes.
  void takeMultiFileOperations();

  // The operations of the one selected file, or those for several files.
  OperationList operations() const;
  // Title, name of an icon and detail of each.
  std::vector<std::array<std::u16string, 3>> rows() const;

 private:
  const FileSelection& selection_;
  OperationList multiFileOperations_;
};

}  // namespace quillet
