#include "shell/table_keys.h"

namespace quillet {

namespace {

struct SwallowedKey {
  std::string_view tableName;
  char16_t key;
};

constexpr SwallowedKey kSwallowedKeys[] = {
    {"filesTableView", kSpaceKey},
    {"logTableView", kReturnKey},
    {"previewTableView", kReturnKey},
    {"previewOutputTableView", kReturnKey},
};

}  // namespace

bool swallowsKey(std::string_view tableName, char16_t key) {
  for (const auto& swallowed : kSwallowedKeys)
    if (swallowed.tableName == tableName && swallowed.key == key) return true;
  return false;
}

bool swallowsPaste(std::string_view tableName) {
  return tableName == "filesTableView";
}

}  // namespace quillet
