#include "skin/PicButton.h"
