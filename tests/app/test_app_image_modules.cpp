// Starting at one density and then at the other finds the fitting image
// module each time: neither start removes the other module.
#include <windows.h>

#include <string>

#include "app/Startup.h"
#include "tests/framework/ZvTest.h"

TEST_CASE(App_Startup_BothImageModulesSurviveDensityChanges) {
    wchar_t exe[MAX_PATH];
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    std::wstring built(exe);
    built.resize(built.rfind(L'\\') + 1);
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring install = std::wstring(temp) + L"zv-image-modules";
    CreateDirectoryW(install.c_str(), nullptr);
    for (const wchar_t* name : {L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll"})
        CHECK(CopyFileW((built + name).c_str(), (install + L"\\" + name).c_str(), FALSE));
    for (bool low : {true, false, true}) {
        HMODULE module = LoadImageModule(install.c_str(), low);
        CHECK(module != nullptr);
        if (module) FreeLibrary(module);
    }
    for (const wchar_t* name : {L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll"}) {
        std::wstring path = install + L"\\" + name;
        CHECK(GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES);
        DeleteFileW(path.c_str());
    }
    RemoveDirectoryW(install.c_str());
}
