#include "clipboard/cell_trim.h"

namespace quillet {}  // namespace quillet
