#include "clipboard/grid_joins.h"

namespace quillet {}  // namespace quillet
