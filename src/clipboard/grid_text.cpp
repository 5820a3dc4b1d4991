#include "clipboard/grid_text.h"

namespace quillet {}  // namespace quillet
