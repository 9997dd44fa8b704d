#include "skin/SkinWnd.h"
