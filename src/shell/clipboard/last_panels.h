// The records that the sheets of the clipboard data window were used with last. One setting keeps them all,
// each whole under the key of its sheet.
#pragma once

#include <string>

#include "operations/operation_record.h"
#include "platform/user_defaults.h"

namespace quillet {

// An empty record when there is none. What is there and cannot be part of a record is left out.
OperationRecord lastDictionary(const UserDefaults& defaults, const std::string& key);
void storeLastDictionaryToDefaults(UserDefaults& defaults, const OperationRecord& record,
                                   const std::string& key);

}  // namespace quillet
