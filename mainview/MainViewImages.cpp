#include "mainview/MainViewImages.h"

PlanarImage g_categoryImage;
