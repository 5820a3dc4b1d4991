#include "text/replacement_table.h"
