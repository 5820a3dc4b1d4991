#include "clipboard/clipboard_data.h"

namespace quillet {}  // namespace quillet
