#include "clipboard/cell_changes.h"

namespace quillet {}  // namespace quillet
