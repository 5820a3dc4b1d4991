#include "operations/line_numbers.h"
