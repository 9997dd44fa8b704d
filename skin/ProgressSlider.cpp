#include "skin/ProgressSlider.h"
