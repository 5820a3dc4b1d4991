#include "platform/character_set.h"
