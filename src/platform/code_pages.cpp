#include "platform/code_pages.h"
