#include "skin/SkinPalette.h"
