#include "platform/folders.h"
