#include "clipboard/clipboard_engine.h"

namespace quillet {}  // namespace quillet
