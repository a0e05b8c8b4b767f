// The main view's program-wide images.
#pragma once
#include "images/PlanarImage.h"

extern PlanarImage g_categoryImage;  // a category in the tree, loaded at start-up
