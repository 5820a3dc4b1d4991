#include "operations/operation_description.h"
