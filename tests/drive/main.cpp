// quillet-drive [--no-documents] ROOT < script.jsonl > results.jsonl
//
// The application without its windows: carries out commands, one JSON object a line, and prints one result a
// line.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>

#include "drive/drive.h"
#include "platform/folders.h"

namespace {

using quillet::drive::Documents;
using quillet::drive::Drive;

struct CommandLine {
  Documents documents = Documents::InRoot;
  std::string root;
};

bool readCommandLine(int count, char** words, CommandLine& commandLine) {
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--no-documents")
      commandLine.documents = Documents::None;
    else if (commandLine.root.empty() && !word.empty())
      commandLine.root = word;
    else
      return false;
  }
  return !commandLine.root.empty();
}

// Absolute, without a slash at its end; empty if there is no such folder. Relative paths are taken from it
// from now on.
std::string enteredRoot(const std::string& root) {
  std::error_code error;
  std::string path = std::filesystem::absolute(root, error).string();
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return !error && chdir(path.c_str()) == 0 ? path : "";
}

void printLine(const nlohmann::json& result) {
  std::cout << result.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n' << std::flush;
}

void serve(Drive& drive) {
  for (std::string line; std::cout && std::getline(std::cin, line);) {
    nlohmann::json result = drive.result(line);
    if (result["ok"] == true) drive.desktop().addEventsTo(result);
    printLine(result);
  }
}

}  // namespace

int main(int count, char** words) {
  CommandLine commandLine;
  if (!readCommandLine(count, words, commandLine)) {
    std::fputs("usage: quillet-drive [--no-documents] ROOT < script.jsonl > results.jsonl\n", stderr);
    return 2;
  }
  // A write that fails is told to the one who writes.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  const std::string root = enteredRoot(commandLine.root);
  if (root.empty()) {
    std::fprintf(stderr, "quillet-drive: no such folder: %s\n", commandLine.root.c_str());
    return 2;
  }
  std::ios::sync_with_stdio(false);
  Drive drive(root, commandLine.documents);
  serve(drive);
  // The end does not wait for a run, and destroys nothing that it uses.
  if (drive.isRunGoingOn()) {
    quillet::PrivateTemporaryFolder::removeAll();
    std::_Exit(EXIT_SUCCESS);
  }
  return EXIT_SUCCESS;
}
