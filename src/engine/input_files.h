// The list of input files. The main thread edits it, job threads read it live and store the columns that they
// found. Safe from any thread: an entry is an unchanging value, and who changes one stores another in its
// place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "operations/input_file.h"
#include "platform/index_set.h"

namespace quillet {

class InputFiles {
 public:
  using Entry = std::shared_ptr<const InputFile>;

  std::size_t count() const;
  Entry at(std::size_t index) const;  // null beyond the end
  std::vector<Entry> all() const;     // a copy of the pointers

  void setAll(std::vector<Entry> entries);
  void insert(std::size_t index, const std::vector<Entry>& entries);  // behind the end: at the end
  // How many were moved, and which were removed; indexes beyond the end are passed over.
  std::size_t move(const IndexSet& indexes, std::int64_t row);  // as withRowsMoved does
  std::vector<Entry> remove(const IndexSet& indexes);
  void replace(std::size_t index, Entry entry);                     // nothing beyond the end
  bool setOperations(std::size_t index, OperationList operations);  // false beyond the end

  // Stores the columns in the entry at the index, as it is now, if it still is the file of this path: the
  // list may have been edited since the pass began.
  void setExpectedColumnsInLine(std::size_t index, const std::optional<std::string>& filePath,
                                std::vector<ColumnEntry> columns);

 private:
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;
};

}  // namespace quillet
