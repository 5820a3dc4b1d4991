#include "platform/date_ladders.h"
