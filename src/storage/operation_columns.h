// Where the keys of an operation's record stand in the table "operations".
#pragma once

#include <string>
#include <string_view>

namespace quillet {

struct OperationColumn {
  std::string_view column;
  std::string_view key;
};

// In the order of the table, behind job_id, input_file_id and idx.
inline constexpr OperationColumn kOperationIntegers[] = {{"code", "Code"},       {"intarg1", "IntArg1"},
                                                         {"intarg2", "IntArg2"}, {"intarg3", "IntArg3"},
                                                         {"intarg4", "IntArg4"}, {"intarg5", "IntArg5"}};
inline constexpr OperationColumn kOperationTexts[] = {
    {"arg1", "Arg1"}, {"arg2", "Arg2"}, {"arg3", "Arg3"}, {"arg4", "Arg4"}, {"arg5", "Arg5"}};

// All of these columns, from job_id on, as a statement names them.
inline std::string operationColumnNames() {
  std::string result = "job_id, input_file_id, idx";
  for (const auto& integer : kOperationIntegers) result.append(", ").append(integer.column);
  for (const auto& text : kOperationTexts) result.append(", ").append(text.column);
  return result;
}

}  // namespace quillet
