#include "operations/default_operations.h"
