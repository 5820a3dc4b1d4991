#include "operations/operation_record.h"
