#include "clipboard/grid_merges.h"

namespace quillet {}  // namespace quillet
