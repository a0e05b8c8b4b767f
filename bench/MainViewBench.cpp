// zvmainbench: times the main window on a big lists folder, from its
// creation to its first painted tree, then scrolling the tree and opening
// and closing a category. The folder holds `categories` categories of
// `lists` lists each, every list with its own 32 x 32 icon in its file.
//
//   zvmainbench.exe [categories] [lists per category]   (default 40 x 50)
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "app/RegistryConfig.h"
#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "bench/BenchCommon.h"
#include "document/ListFile.h"
#include "mainview/CategoryTree.h"
#include "mainview/MainWindow.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"
#include "settings/AppSettings.h"

namespace {

// A list of two fields with its own icon.
void WriteList(const std::wstring& path, int seed) {
    ListDocument doc;
    FieldDef check, text;
    check.type = FieldType::Check;
    check.SetName(L"Done");
    text.type = FieldType::Text;
    text.SetName(L"Item");
    doc.fields = {check, text};
    doc.icon.Allocate(32, 32);
    for (int p = 0; p < doc.icon.PixelCount(); ++p) {
        doc.icon.red[p] = (unsigned char)(seed * 7 + p);
        doc.icon.green[p] = (unsigned char)(seed * 3);
        doc.icon.blue[p] = (unsigned char)p;
        doc.icon.alpha[p] = 255;
    }
    writeListFile(path.c_str(), doc);
}

void WriteListsFolder(const std::wstring& folder, int categories, int lists) {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int c = 0; c < categories; ++c) {
        wchar_t category[MAX_PATH];
        swprintf(category, MAX_PATH, L"%lsCategory %02d", folder.c_str(), c);
        CreateDirectoryW(category, nullptr);
        for (int l = 0; l < lists; ++l) {
            wchar_t path[MAX_PATH];
            swprintf(path, MAX_PATH, L"%ls\\List %03d.zvl", category, l);
            if (GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) WriteList(path, c * lists + l);
        }
    }
}

void Pump() {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

// One start of the main window, to its painted tree: the window is made
// (the tree filled), shown and painted before the clock stops.
double TimeStart(HWND& window) {
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    window = CreateMainWindow(hInstance);
    if (!window || !g_mainView.tree) return -1;
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    RedrawWindow(g_mainView.tree, nullptr, nullptr, RDW_UPDATENOW);
    return bench::MsSince(start);
}

template <typename Action>
double TimeAction(Action action) {
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    action();
    UpdateWindow(g_mainView.tree);
    Pump();
    return bench::MsSince(start);
}

void Report(const char* what, std::vector<double> runs) {
    std::sort(runs.begin(), runs.end());
    std::printf("  %-34s best %7.1f   median %7.1f   worst %7.1f\n", what, runs.front(), runs[runs.size() / 2],
                runs.back());
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bench::Start(ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES);
    RegisterMainWindowClass(hInstance, MainWndProc, LoadIconW(hInstance, MAKEINTRESOURCEW(IDI_MAIN_WINDOW)),
                            kMainWindowClass);

    const int categories = argc >= 2 ? _wtoi(argv[1]) : 40;
    const int lists = argc >= 3 ? _wtoi(argv[2]) : 50;
    CreateDirectoryW(L"C:\\zvbench", nullptr);
    const std::wstring folder = L"C:\\zvbench\\lists\\";
    WriteListsFolder(folder, categories, lists);

    // The bench points ListsPath at its own folder and puts the old value back.
    wchar_t saved[MAX_PATH + 2] = {};
    g_registryConfig.GetListsPath(1, saved);
    g_registryConfig.SetListsPath(1, folder.c_str());
    std::printf("lists folder of %d categories x %d lists with 32 x 32 icons (%d dpi); wall ms\n", categories, lists,
                ScreenDpiX());

    std::vector<double> starts, scrolls, toggles;
    int status = 0;
    for (int run = 0; run < 6; ++run) {
        HWND window = nullptr;
        double ms = TimeStart(window);
        if (ms < 0) status = 1;
        if (run > 0) starts.push_back(ms);  // the first start also fills the file cache
        HWND tree = g_mainView.tree;
        for (int i = 0; i < 10 && tree; ++i) {
            scrolls.push_back(TimeAction([&] { SendMessageW(tree, WM_VSCROLL, SB_PAGEDOWN, 0); }));
            HTREEITEM category = TreeView_GetNextSibling(tree, TreeView_GetRoot(tree));
            toggles.push_back(TimeAction([&] { TreeView_Expand(tree, category, TVE_TOGGLE); }));
        }
        // The main window frees the modules as it goes.
        DestroyWindow(window);
        Pump();
        bench::LoadResourceModules();
    }
    Report("start to first painted tree", starts);
    Report("scroll a page", scrolls);
    Report("open or close a category", toggles);
    g_registryConfig.SetListsPath(1, saved);
    return status;
}
