// Operation records as settings keep them: objects with the record's own keys.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "operations/operation_record.h"

namespace quillet {

nlohmann::json jsonFromOperation(const OperationRecord& operation);
nlohmann::json jsonFromOperations(const OperationList& operations);

// A number with a fraction loses it, a boolean is 0 or 1, and a null is an absent key. Nothing for what is
// not an object of numbers, booleans, texts and nulls.
std::optional<OperationRecord> operationFromJson(const nlohmann::json& json);
std::optional<OperationList> operationsFromJson(
    const nlohmann::json& json);  // nothing if one record is nothing

// As operationFromJson, but a key with another value is absent; what is not an object is an empty record.
OperationRecord readablePartOfOperation(const nlohmann::json& json);

}  // namespace quillet
