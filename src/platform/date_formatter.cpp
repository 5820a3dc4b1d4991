#include "platform/date_formatter.h"
