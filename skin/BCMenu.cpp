#include "skin/BCMenu.h"
