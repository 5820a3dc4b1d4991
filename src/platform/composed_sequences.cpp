#include "platform/composed_sequences.h"
