#include "platform/numbers.h"
