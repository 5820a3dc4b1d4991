// The application's values as the tool prints and reads them. Reading throws CommandError.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/job_log.h"
#include "engine/preview_stores.h"
#include "operations/input_file.h"
#include "platform/index_set.h"
#include "shell/controls.h"

namespace quillet::drive {

using nlohmann::json;

json jsonText(std::u16string_view text);
json jsonText(const std::optional<std::string>& text);  // bytes; absent is null
json jsonTexts(const std::vector<std::u16string>& texts);
json jsonRows(const std::vector<std::vector<std::u16string>>& rows);
json jsonShownRows(const Table& table);  // a list of texts a row
json jsonPaths(const std::vector<std::string>& paths);
json jsonIndexes(const IndexSet& indexes);  // every index by itself; throws when they are too many for a list
json jsonColour(TextColour colour);

OperationRecord operationFromCommand(const json& value);
OperationList operationsFromCommand(const json& value);

// Absent keys are left out; an entry is read with what it names.
json jsonInputFile(const InputFile& file);
InputFile inputFileFromCommand(const json& value);

}  // namespace quillet::drive
