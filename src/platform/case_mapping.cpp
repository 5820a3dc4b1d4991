#include "platform/case_mapping.h"
