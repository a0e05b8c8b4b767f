// Lets the settings dialog's third page link before the templates manager
// exists in this branch; removed when the templates manager lands.
#include "templates/TemplatesManager.h"

int RunTemplatesManager(HWND) { return 1; }
