#include "platform/user_defaults.h"
