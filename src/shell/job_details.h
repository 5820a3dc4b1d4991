// Saved jobs in words: their dates, and what the settings of a job of the first generation say.
#pragma once

#include <string>
#include <string_view>

#include "platform/date_formatter.h"
#include "storage/settings_record.h"

namespace quillet {

// Dates of the job database as the user reads them. One object serves one thread.
class JobDates {
 public:
  JobDates();

  // In the short styles of the locale; "" for a text that is no date of the database.
  std::u16string shown(std::string_view databaseDate) const;

 private:
  DateFormatter previousJobsDateFormatter_;
  DateFormatter databaseDateFormatter_;
};

// A line for each setting that is on. The records are those that DBInterface reads.
std::u16string stringForFileDetails(const SettingsRecord& file);
std::u16string stringForJobDetails(const SettingsRecord& job, const JobDates& dates);

}  // namespace quillet
