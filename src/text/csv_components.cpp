#include "text/csv_components.h"
