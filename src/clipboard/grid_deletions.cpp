#include "clipboard/grid_deletions.h"

namespace quillet {}  // namespace quillet
