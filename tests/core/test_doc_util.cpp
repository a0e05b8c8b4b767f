#include "tests/core/test_doc_util.h"

#include "document/ListDocument.h"

namespace doctest {

std::wstring ScratchDir(const wchar_t* name) {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring dir = std::wstring(temp) + L"zvdoc_" + name;
    RemoveTree(dir);
    CreateDirectoryW(dir.c_str(), nullptr);
    return dir;
}

FieldDef MakeField(const wchar_t* name, int type, const wchar_t* defaultText, int defaultChoice, int width,
                   int dateMode, int timeMode) {
    FieldDef f;
    f.SetName(name);
    f.type = FieldType(type);
    f.SetDefaultText(defaultText);
    f.defaultChoice = defaultChoice;
    f.columnWidth = width;
    f.dateDefaultMode = dateMode;
    f.timeDefaultMode = timeMode;
    return f;
}

}  // namespace doctest
