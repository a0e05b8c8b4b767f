#include "base/CeString.h"
#include "tests/framework/ZvTest.h"

TEST_CASE(Base_CeString_Placeholder) { CeString s(L"abc"); CHECK_EQ(s.Length(), 3); }
