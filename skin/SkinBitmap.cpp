#include "skin/SkinBitmap.h"
