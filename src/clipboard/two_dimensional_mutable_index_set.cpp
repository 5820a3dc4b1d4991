#include "clipboard/two_dimensional_mutable_index_set.h"

namespace quillet {}  // namespace quillet
