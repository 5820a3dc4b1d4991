#include "clipboard/grid_edges.h"

namespace quillet {}  // namespace quillet
