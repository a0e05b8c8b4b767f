#include "mainview/MainViewImages.h"

PlanarImage g_categoryImage;
PlanarImage g_defaultListImage;
PlanarImage g_rootImage;
