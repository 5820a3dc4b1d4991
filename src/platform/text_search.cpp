#include "platform/text_search.h"
