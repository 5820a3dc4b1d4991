#include "operations/labels.h"
