#include "scenarios/drive_session.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillet::testing {

namespace {

std::vector<std::string> environmentOfDrive() {
  std::vector<std::string> result = {"LC_ALL=en_US.UTF-8", "TZ=UTC"};
  for (char** entry = environ; *entry; ++entry) {
    const std::string variable = *entry;
    if (!variable.starts_with("LC_ALL=") && !variable.starts_with("TZ=")) result.push_back(variable);
  }
  return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> result;
  for (auto& word : words) result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

}  // namespace

DriveSession::DriveSession(const std::string& root, const std::vector<std::string>& options) {
  int input[2];
  int output[2];
  EXPECT_EQ(pipe2(input, O_CLOEXEC), 0);
  EXPECT_EQ(pipe2(output, O_CLOEXEC), 0);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  std::vector<std::string> words = {QUILLET_DRIVE};
  words.insert(words.end(), options.begin(), options.end());
  words.push_back(root);
  auto environment = environmentOfDrive();
  EXPECT_EQ(posix_spawn(&process_, QUILLET_DRIVE, &actions, nullptr, pointersTo(words).data(),
                        pointersTo(environment).data()),
            0);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  toDrive_ = input[1];
  fromDrive_ = output[0];
}

DriveSession::~DriveSession() {
  if (process_ <= 0) return;
  EXPECT_EQ(end(), 0);
}

json DriveSession::send(const json& command) {
  return sendLine(command.dump());
}

json DriveSession::sendLine(const std::string& line) {
  const std::string bytes = line + "\n";
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t count = ::write(toDrive_, bytes.data() + sent, bytes.size() - sent);
    if (count < 0) return {};
    sent += static_cast<std::size_t>(count);
  }
  while (received_.find('\n') == std::string::npos) {
    char block[65536];
    const ssize_t count = ::read(fromDrive_, block, sizeof block);
    if (count <= 0) return {};
    received_.append(block, static_cast<std::size_t>(count));
  }
  const std::size_t length = received_.find('\n');
  const std::string result = received_.substr(0, length);
  received_.erase(0, length + 1);
  return json::parse(result, nullptr, false);
}

int DriveSession::end() {
  close(toDrive_);
  int status = -1;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  close(fromDrive_);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

DriveSession& Scenario::session() {
  if (!session_) session_ = std::make_unique<DriveSession>(root(), options_);
  return *session_;
}

void Scenario::restart(const std::vector<std::string>& options) {
  session_.reset();
  options_ = options;
}

json Scenario::done(const std::string& what, json arguments) {
  arguments["do"] = what;
  json result = session().send(arguments);
  EXPECT_TRUE(result.is_object() && result.value("ok", false)) << arguments << " gives " << result;
  return result.is_object() ? result : json::object();
}

json Scenario::call(const std::string& name, json arguments) {
  arguments["name"] = name;
  return done("call", std::move(arguments));
}

std::string Scenario::refused(const json& command) {
  json result = session().send(command);
  EXPECT_TRUE(result.is_object() && result.value("ok", true) == false) << command << " gives " << result;
  return result.is_object() ? result.value("error", "") : "";
}

json Scenario::defaultOf(const std::string& key) {
  return done("getDefaults", {{"keys", {key}}})["values"][key];
}

void Scenario::add(const std::vector<std::string>& paths) {
  done("addInputFiles",
       {{"paths", paths}, {"row", entries().size()}, {"selectFiles", true}, {"restoreOperations", false}});
}

void Scenario::setOperations(int index, const json& operations) {
  done("setOperations", {{"index", index}, {"operations", operations}});
}

void Scenario::useOutputFolder() {
  std::filesystem::create_directory(path("out"));
  done("selectOutputFolder", {{"panel", {path("out")}}});
}

json csvOperations(const std::string& outputName, const std::vector<json>& between) {
  json list = json::array();
  list.push_back({{"Code", 101}, {"IntArg1", 49}, {"IntArg2", 4}, {"Arg1", "\n"}, {"Arg2", ","}});
  for (const auto& operation : between) list.push_back(operation);
  list.push_back({{"Code", 901},
                  {"IntArg1", 0},
                  {"IntArg2", 4},
                  {"IntArg3", 2},
                  {"Arg1", "\n"},
                  {"Arg2", ","},
                  {"Arg4", outputName}});
  return list;
}

json sheet(const std::string& title, const std::string& message) {
  return {{"title", title}, {"message", message}, {"sheet", true}, {"window", "window"}};
}

json modalAlert(const std::string& title, const std::string& message) {
  return {{"title", title}, {"message", message}, {"sheet", false}, {"window", ""}};
}

}  // namespace quillet::testing
