#include "clipboard/separators.h"

namespace quillet {}  // namespace quillet
