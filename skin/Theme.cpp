#include "skin/Theme.h"
