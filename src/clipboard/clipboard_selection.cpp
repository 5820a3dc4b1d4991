#include "clipboard/clipboard_selection.h"

namespace quillet {}  // namespace quillet
