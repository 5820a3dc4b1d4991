#include "clipboard/cell_statistics.h"

namespace quillet {}  // namespace quillet
