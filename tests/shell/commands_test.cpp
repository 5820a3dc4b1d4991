#include "shell/commands.h"

#include <gtest/gtest.h>

#include "shell/controls.h"

namespace quillet {
namespace {

TEST(CommandsTest, PerformsWhatTheNameStandsFor) {
  Commands commands;
  int performed = 0;
  commands.add("one", [&] { ++performed; });
  EXPECT_TRUE(commands.has("one"));
  EXPECT_TRUE(commands.perform("one"));
  EXPECT_EQ(performed, 1);
}

TEST(CommandsTest, AnUnknownNameDoesNothing) {
  const Commands commands;
  EXPECT_FALSE(commands.has("one"));
  EXPECT_FALSE(commands.perform("one"));
}

TEST(CommandsTest, TheSenderIsTheControlOrNone) {
  UserInterface interface;
  Window window(interface, "window", u"");
  Button button(window, "button", u"", "");
  Commands commands;
  std::vector<Control*> senders;
  commands.addWithSender("one", [&](Control* sender) { senders.push_back(sender); });
  commands.perform("one", &button);
  commands.perform("one");
  EXPECT_EQ(senders, (std::vector<Control*>{&button, nullptr}));
}

TEST(CommandsTest, ALaterHandlerTakesTheNameOver) {
  Commands commands;
  std::string performed;
  commands.add("one", [&] { performed += "first"; });
  commands.add("one", [&] { performed += "second"; });
  commands.perform("one");
  EXPECT_EQ(performed, "second");
  EXPECT_EQ(commands.names(), std::vector<std::string>{"one"});
}

TEST(CommandsTest, NamesAreSorted) {
  Commands commands;
  for (const char* name : {"b", "c", "a"}) commands.add(name, [] {});
  EXPECT_EQ(commands.names(), (std::vector<std::string>{"a", "b", "c"}));
}

}  // namespace
}  // namespace quillet
