#include "app/Startup.h"

#include <cwchar>

#include "mainview/MainWindow.h"
#include "app/RegistryConfig.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "mainview/MainViewImages.h"
#include "platform/aygshell.h"
#include "program/ProgramIds.h"
#include "ImageIds.h"

const wchar_t kMainWindowClass[] = L"ZorvelConsole";
const wchar_t kMainWindowTitle[] = L"Zorvel";

TextBuffer g_commandLineFile = [] {
    TextBuffer b;
    b.Init();
    return b;
}();

namespace {
struct SampleFile {
    const wchar_t* category;  // nullptr: a template, placed in the templates folder
    const wchar_t* name;
};

const SampleFile kSampleFiles[] = {
    {L"Business", L"Company goals 2007.zvl"},
    {L"Personal", L"Grocery - morning workdays.zvl"},
    {L"Personal", L"Grocery - weekly.zvl"},
    {L"Personal", L"Travel - business flights.zvl"},
    {nullptr, L"Goals.zvt"},
    {nullptr, L"Packing.zvt"},
    {nullptr, L"Shopping.zvt"},
    {nullptr, L"Simple list.zvt"},
    {nullptr, L"Dated Assignments.zvt"},
    {nullptr, L"Simple check-list.zvt"},
};

bool FileExists(const wchar_t* path) {
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

// The single-instance rule: bring the running copy (and its open dialog) to
// the front and end this one.
bool ActivateRunningInstance() {
    HWND running = FindWindowW(kMainWindowClass, kMainWindowTitle);
    if (!running) return false;
    HWND front = GetLastActivePopup(running);
    if (IsIconic(running)) ShowWindow(running, SW_RESTORE);
    SetForegroundWindow(front ? front : running);
    return true;
}

}  // namespace

HMODULE LoadImageModule(const wchar_t* installPath, bool lowDensity) {
    // Both modules stay installed: a desktop's density changes with its
    // monitor and scale setting, and each start picks the one that fits.
    wchar_t chosen[MAX_PATH];
    wsprintfW(chosen, L"%s\\%s", installPath, lowDensity ? L"ZVLowDpiRes.dll" : L"ZVHighDpiRes.dll");
    return LoadLibraryW(chosen);
}

void MakeProgramDriveCurrent() {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    if (n >= 2 && path[1] == L':') {
        wchar_t drive[4] = {path[0], L':', L'\\', 0};
        SetCurrentDirectoryW(drive);
    }
}

void UnquoteDesktopCommandLine(wchar_t* commandLine) {
    size_t n = wcslen(commandLine);
    while (n > 0 && commandLine[n - 1] == L' ') commandLine[--n] = 0;
    if (n >= 2 && commandLine[0] == L'"' && wcschr(commandLine + 1, L'"') == commandLine + n - 1) {
        wmemmove(commandLine, commandLine + 1, n - 2);
        commandLine[n - 2] = 0;
    }
}

ATOM RegisterMainWindowClass(HINSTANCE instance, WNDPROC wndProc, HICON icon, const wchar_t* className) {
    WNDCLASSW wc = {};
    wc.style = CS_HREDRAW | CS_VREDRAW;
    wc.lpfnWndProc = wndProc;
    wc.hInstance = instance;
    wc.hIcon = icon;
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    wc.lpszClassName = className;
    return RegisterClassW(&wc);
}

bool IsListFileName(const TextBuffer& path) {
    if (path.length == 0) return false;
    wchar_t last = path.text[path.length - 1];
    return last == L'l' || last == L'L';
}

void FileTitleFromPath(const TextBuffer& path, wchar_t* out) {
    const wchar_t* slash = wcsrchr(path.text, L'\\');
    const wchar_t* start = slash ? slash + 1 : path.text;
    const wchar_t* dot = wcschr(start, L'.');
    size_t n = dot ? size_t(dot - start) : wcslen(start);
    wmemcpy(out, start, n);
    out[n] = 0;
}

void PlaceSampleFile(const wchar_t* folder, const wchar_t* fileName, bool lowDensity) {
    const wchar_t* fits = lowDensity ? L"_qvga" : L"_vga";
    const wchar_t* other = lowDensity ? L"_vga" : L"_qvga";
    wchar_t plain[MAX_PATH * 2], fitting[MAX_PATH * 2], unfit[MAX_PATH * 2];
    wsprintfW(plain, L"%s%s", folder, fileName);
    wsprintfW(fitting, L"%s%s", plain, fits);
    wsprintfW(unfit, L"%s%s", plain, other);
    DeleteFileW(unfit);
    // A file the user already has is never replaced.
    if (FileExists(plain))
        DeleteFileW(fitting);
    else
        MoveFileW(fitting, plain);
}

void PlaceSampleFiles(const wchar_t* listsPath, const wchar_t* templatePath, bool lowDensity) {
    for (const SampleFile& sample : kSampleFiles) {
        wchar_t folder[MAX_PATH * 2];
        if (sample.category)
            wsprintfW(folder, L"%s\\%s\\", listsPath, sample.category);
        else
            wsprintfW(folder, L"%s\\", templatePath);
        PlaceSampleFile(folder, sample.name, lowDensity);
    }
}

BOOL InitInstance(HINSTANCE instance, int /*nCmdShow*/, LPWSTR lpCmdLine) {
    hInstance = instance;
    if (ActivateRunningInstance()) return FALSE;
    InitScreenScale(0);
    RegisterMainWindowClass(instance, MainWndProc, LoadIconW(instance, MAKEINTRESOURCEW(IDI_MAIN_WINDOW)), kMainWindowClass);

    g_registryConfig.LoadStartupPaths();
    wchar_t listsPath[260];
    wcsncpy(listsPath, g_registryConfig.value.Text(), 259);
    listsPath[259] = 0;
    const wchar_t* installPath = g_registryConfig.installPath.Text();
    hImageModule = LoadImageModule(installPath, IsLowDensityScreen());

    wchar_t languagePath[260];
    g_registryConfig.GetLanguageModulePath(languagePath);
    hLangModule = LoadLibraryW(languagePath);
    if (LanguageUsesDottedDates(languagePath)) UseSlashDates = 0;

    if (!hImageModule || !hLangModule) {
        MessageBoxW(nullptr, L"Error loading system files Please re-install Zorvel", L"Error", MB_ICONEXCLAMATION);
        PostQuitMessage(0);
        return FALSE;
    }

    wchar_t templatePath[260];
    g_registryConfig.GetTemplatePath(templatePath);
    PlaceSampleFiles(listsPath, templatePath, IsLowDensityScreen());
    LoadTgaResource(g_categoryImage, hImageModule, IDT_CATEGORY);
    wchar_t programPath[MAX_PATH];
    if (GetModuleFileNameW(nullptr, programPath, MAX_PATH) < MAX_PATH) RegisterFileAssociations(programPath);

    g_commandLineFile.Assign(lpCmdLine ? lpCmdLine : L"");

    HWND window = CreateMainWindow(instance);
    if (!window) return FALSE;
    if (g_hMainMenuBar) {
        // The bar's rectangle is read but leaves the window where it is.
        RECT windowRect, barRect;
        GetWindowRect(window, &windowRect);
        GetWindowRect(g_hMainMenuBar, &barRect);
        MoveWindow(window, windowRect.left, windowRect.top, windowRect.right - windowRect.left,
                   windowRect.bottom - windowRect.top, FALSE);
    }
    UpdateWindow(window);
    return TRUE;
}
