#include "platform/system_log.h"
