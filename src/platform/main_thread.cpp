#include "platform/main_thread.h"
