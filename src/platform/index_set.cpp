#include "platform/index_set.h"
