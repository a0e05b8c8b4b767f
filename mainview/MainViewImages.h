// The main view's program-wide images.
#pragma once
#include "images/PlanarImage.h"

extern PlanarImage g_categoryImage;     // a category in the tree, loaded at start-up
extern PlanarImage g_defaultListImage;  // a list without an icon of its own
extern PlanarImage g_rootImage;         // the Root item's icon
