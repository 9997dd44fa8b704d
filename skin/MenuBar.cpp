#include "skin/MenuBar.h"
