#include "platform/unicode_text.h"
