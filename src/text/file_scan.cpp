#include "text/file_scan.h"
