#include "clipboard/grid_flips.h"

namespace quillet {}  // namespace quillet
