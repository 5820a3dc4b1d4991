#include "operations/list_rules.h"
