#include "shell/clipboard/last_panels.h"

#include <nlohmann/json.hpp>

#include "shell/operation_json.h"

namespace quillet {

namespace {

constexpr const char* kLastPanelsKey = "ClipboardDataLastKey";

nlohmann::json allPanels(const UserDefaults& defaults) {
  nlohmann::json panels = defaults.value(kLastPanelsKey);
  return panels.is_object() ? panels : nlohmann::json::object();
}

}  // namespace

OperationRecord lastDictionary(const UserDefaults& defaults, const std::string& key) {
  const nlohmann::json panels = allPanels(defaults);
  const auto found = panels.find(key);
  return found == panels.end() ? OperationRecord() : readablePartOfOperation(*found);
}

void storeLastDictionaryToDefaults(UserDefaults& defaults, const OperationRecord& record,
                                   const std::string& key) {
  nlohmann::json panels = allPanels(defaults);
  panels[key] = jsonFromOperation(record);
  defaults.setValue(kLastPanelsKey, std::move(panels));
}

}  // namespace quillet
