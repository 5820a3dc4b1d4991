// Operation records from any settings file: what is taken is stored and taken again as the same, and can be
// described and checked.
//
// Input: JSON.
#include <nlohmann/json.hpp>

#include "fuzz_input.h"
#include "operations/list_rules.h"
#include "operations/operation_description.h"
#include "shell/operation_json.h"

namespace quillet::fuzz {
namespace {

void requireDescriptions(const OperationList& list) {
  const OperationRecord* first = list.empty() ? nullptr : &list.front();
  const OperationRecord* last = list.empty() ? nullptr : &list.back();
  for (const auto& record : list) {
    const auto described = descriptionForOperation(record, first, last);
    require(described == descriptionForOperation(record, first, nullptr), "the final record is never read");
  }
}

}  // namespace
}  // namespace quillet::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillet;
  using namespace quillet::fuzz;
  const nlohmann::json json = nlohmann::json::parse(data, data + size, nullptr, false);
  if (json.is_discarded()) return 0;
  const auto list = operationsFromJson(json);
  if (!list) return 0;
  const std::string stored = jsonFromOperations(*list).dump();
  require(operationsFromJson(nlohmann::json::parse(stored)) == list, "a stored list is taken as itself");
  requireDescriptions(*list);
  require(problemsBeforeRun(*list, u"name.txt").size() <= 5, "there is a message for each rule at most");
  return 0;
}
