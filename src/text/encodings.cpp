#include "text/encodings.h"
