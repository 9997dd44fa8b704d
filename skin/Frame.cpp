#include "skin/Frame.h"
