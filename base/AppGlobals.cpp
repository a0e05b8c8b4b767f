#include "base/AppGlobals.h"

HINSTANCE hInstance;
HINSTANCE hLangModule;
HINSTANCE hImageModule;
int UseSlashDates = 1;
