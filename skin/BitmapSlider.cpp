#include "skin/BitmapSlider.h"
