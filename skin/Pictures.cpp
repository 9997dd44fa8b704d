#include "skin/Pictures.h"
