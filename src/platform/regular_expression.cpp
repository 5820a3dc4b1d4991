#include "platform/regular_expression.h"
