#include "shell/commands.h"

#include <utility>

namespace quillet {

void Commands::add(std::string name, std::function<void()> handler) {
  addWithSender(std::move(name), [handler = std::move(handler)](Control*) { handler(); });
}

void Commands::addWithSender(std::string name, Handler handler) {
  handlers_.insert_or_assign(std::move(name), std::move(handler));
}

bool Commands::perform(std::string_view name, Control* sender) const {
  const auto found = handlers_.find(name);
  if (found == handlers_.end()) return false;
  found->second(sender);
  return true;
}

std::vector<std::string> Commands::names() const {
  std::vector<std::string> result;
  for (const auto& [name, handler] : handlers_) result.push_back(name);
  return result;
}

}  // namespace quillet
