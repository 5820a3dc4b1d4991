// The commands of the clipboard data window that need no sheet of their own: each builds a record and hands
// it to the gate, some after a prompt for a text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clipboard/clipboard_data.h"
#include "platform/user_defaults.h"
#include "shell/commands.h"
#include "shell/desktop.h"

namespace quillet {

// Main thread only. All references outlive it.
class ClipboardCommands {
 public:
  ClipboardCommands(ClipboardData& data, UserDefaults& defaults, const Desktop& desktop);

  void addCommandsTo(Commands& commands);

 private:
  // What a record names of the selection; single cells play no part in it.
  enum class Selected { Nothing, Lines, Columns };

  // An operation whose record names all of what is selected, under Arg1.
  struct Plain {
    std::string_view handler;
    std::int64_t code;
    Selected arg1;
  };
  // An operation on a text that is asked for and remembered. Prompt and info are keys.
  struct Prompted {
    std::string_view handler;
    const char* defaultsKey;
    std::u16string_view prompt;
    std::u16string_view info;  // or empty
    std::int64_t code;
    Selected arg2;
  };

  static const Plain kPlain[];
  static const Prompted kPrompted[];

  void perform(const Plain& command);
  void fillFromDirection(std::int64_t code);
  void flip(std::int64_t code);
  void promptAndStoreDefaults(const Prompted& command);
  void performPrompted(const Prompted& command, const std::u16string& text, const std::u16string& arg2);

  std::u16string listOf(Selected selected) const;

  ClipboardData& data_;
  UserDefaults& defaults_;
  Alerts& alerts_;
  Prompts& prompts_;
};

}  // namespace quillet
