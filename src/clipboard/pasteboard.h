// The system's clipboard, as far as it holds text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Main thread only.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  virtual std::optional<std::u16string> readString() = 0;  // nothing when it holds no text
  virtual bool writeString(std::u16string_view text) = 0;  // clears it first; false when that fails
};

}  // namespace quillet
