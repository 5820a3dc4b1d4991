// A row in the list of saved jobs, and what kind of job its numbers tell.
#pragma once

#include <string>
#include <vector>

#include "storage/db_interface.h"

namespace quillet {

// As the database has it, in UTF-8.
struct PreviousJob {
  std::string identifier;
  std::string date;
  std::string name;
  std::string flags;
  std::string kind;

  // Operations are kept with it. Else it is of the first generation, and only its settings can be shown.
  bool isOperationsJob() const;
  // Its operations are those of the clipboard data window, and belong to no file.
  bool isClipboardJob() const;
  bool isNewJob() const { return flags != "0"; }
};

// From five texts a job, in the order above.
std::vector<PreviousJob> previousJobsFromRows(const DBInterface::FlatRows& rows);

}  // namespace quillet
