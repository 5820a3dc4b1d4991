// A second way into a database file, by SQLite alone: to look into it and to write what the system never
// writes.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace quillet::testing {

using Table = std::vector<std::vector<std::string>>;  // NULL is "(null)"

// The connection stays open; locks that it holds are gone with it.
class RawDatabase {
 public:
  explicit RawDatabase(const std::string& path) {
    EXPECT_EQ(sqlite3_open(path.c_str(), &handle_), SQLITE_OK) << path;
  }
  ~RawDatabase() { sqlite3_close(handle_); }
  RawDatabase(const RawDatabase&) = delete;
  RawDatabase& operator=(const RawDatabase&) = delete;

  // The rows of all statements of the script.
  Table rows(const std::string& script) {
    Table result;
    EXPECT_EQ(sqlite3_exec(handle_, script.c_str(), append, &result, nullptr), SQLITE_OK)
        << script << ": " << sqlite3_errmsg(handle_);
    return result;
  }
  std::string lastRow() { return std::to_string(sqlite3_last_insert_rowid(handle_)); }

 private:
  static int append(void* table, int count, char** values, char**) {
    auto& row = static_cast<Table*>(table)->emplace_back();
    for (int i = 0; i < count; ++i) row.emplace_back(values[i] ? values[i] : "(null)");
    return 0;
  }

  sqlite3* handle_ = nullptr;
};

}  // namespace quillet::testing
