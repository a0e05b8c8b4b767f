// The list window's test helpers live with its tests (test_listwindow.cpp);
// this header only brings in the list window and the test file helpers.
#pragma once
#include "listwindow/ListWindow.h"
#include "tests/core/test_doc_util.h"
#include "tests/harness/UiHarness.h"
