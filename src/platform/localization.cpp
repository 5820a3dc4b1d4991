#include "platform/localization.h"
