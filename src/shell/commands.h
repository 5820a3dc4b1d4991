// From the name of a handler to what it does. Menus, buttons and the test tool all go through this table, so
// a command has one name and one place.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

class Control;

// Main thread only.
class Commands {
 public:
  // sender: the control that was used; null when the command came from a menu.
  using Handler = std::function<void(Control* sender)>;

  void add(std::string name, std::function<void()> handler);
  void addWithSender(std::string name, Handler handler);

  bool has(std::string_view name) const { return handlers_.contains(name); }
  // False for an unknown name.
  bool perform(std::string_view name, Control* sender = nullptr) const;
  std::vector<std::string> names() const;  // sorted

 private:
  std::map<std::string, Handler, std::less<>> handlers_;
};

}  // namespace quillet
