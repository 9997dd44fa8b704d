#include "skin/SkinLabel.h"
