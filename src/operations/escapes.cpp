#include "operations/escapes.h"
