// The addresses of the project's pages.
#pragma once

namespace quillet {

inline constexpr const char* kTutorialsPage = "https://quillet.org/tutorials";
inline constexpr const char* kSupportPage = "https://quillet.org/support";

}  // namespace quillet
