// The application under test, in a process of its own: commands go to it one line at a time, and results come
// back.
//
//   Scenario gives a home folder and a session in it:
//     const std::string file = write("a.csv", "x,y\n");
//     launch();
//     add({file});
//     EXPECT_EQ(mainWindow()["path"], file);
#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/types.h>
#include <vector>

#include "support/temporary_folder.h"

namespace quillet::testing {

using nlohmann::json;

class DriveSession {
 public:
  // The locale is en_US, the time zone UTC.
  explicit DriveSession(const std::string& root, const std::vector<std::string>& options = {});
  ~DriveSession();  // ends it
  DriveSession(const DriveSession&) = delete;
  DriveSession& operator=(const DriveSession&) = delete;

  json send(const json& command);
  json sendLine(const std::string& line);  // as it is; null when no result comes
  // Closes the input and waits for the end. The exit status, or -1 for an end by a signal.
  int end();

 private:
  pid_t process_ = -1;
  int toDrive_ = -1;
  int fromDrive_ = -1;
  std::string received_;  // behind the last result
};

class Scenario : public ::testing::Test {
 protected:
  const std::string& root() const { return root_.path(); }
  std::string path(const std::string& name) const { return root_.path(name); }
  std::string write(const std::string& name, const std::string& bytes) const {
    return root_.write(name, bytes);
  }
  std::string read(const std::string& name) const { return root_.read(name); }

  DriveSession& session();  // begins with the first command
  // Ends the process; the next command goes to a new one in the same home.
  void restart(const std::vector<std::string>& options = {});

  // Sends a command whose result must be a good one.
  json done(const std::string& what, json arguments = json::object());
  json call(const std::string& name, json arguments = json::object());
  // The error of a command that must be refused.
  std::string refused(const json& command);

  void launch() { done("launch"); }
  void terminate() { done("terminate"); }
  void setDefault(const std::string& key, const json& value) {
    done("setDefaults", {{"values", {{key, value}}}});
  }
  json defaultOf(const std::string& key);
  void add(const std::vector<std::string>& paths);  // at the end, and selects them
  void select(const std::vector<int>& rows) { done("selectFiles", {{"rows", rows}}); }
  void setOperations(int index, const json& operations);
  json entries() { return done("inputFiles")["inputFilesArray"]; }
  json mainWindow() { return done("mainWindow"); }
  json log() { return done("log")["entries"]; }

  // Makes "out" the output folder.
  void useOutputFolder();
  std::string output(const std::string& name) const { return read("out/" + name); }
  json run() { return done("runButtonPressed"); }

 private:
  TemporaryFolder root_;
  std::vector<std::string> options_;
  std::unique_ptr<DriveSession> session_;
};

// A list of operations from the initial to the final one, split at line feeds and commas.
json csvOperations(const std::string& outputName, const std::vector<json>& between = {});

json sheet(const std::string& title, const std::string& message);
json modalAlert(const std::string& title, const std::string& message = "");

}  // namespace quillet::testing
