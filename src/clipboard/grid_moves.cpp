#include "clipboard/grid_moves.h"

namespace quillet {}  // namespace quillet
