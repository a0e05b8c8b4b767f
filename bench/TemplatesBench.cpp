// zvtemplatebench: times the new list dialog and the templates manager from
// the call that opens them to their painted template list, on a templates
// folder of generated templates with 32 x 32 icons.
//
//   zvtemplatebench.exe [templates]           time with `templates` files (default 1000)
//   zvtemplatebench.exe --show KIND FOLDER [ms]
//                                             show one dialog on FOLDER (a templates
//                                             folder ending in "\") for ms (default
//                                             4000), for screenshots; KIND is new,
//                                             manager, editor (FOLDER\Shopping.zvt)
//                                             or field (a Priority field)
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "bench/BenchCommon.h"
#include "document/ListFile.h"
#include "platform/ScreenScale.h"
#include "settings/AppSettings.h"
#include "templates/Templates.h"

namespace {

struct BenchState {
    LARGE_INTEGER openStart = {};
    double paintedMs = -1;
    HWND listView = nullptr;
    WNDPROC listViewProc = nullptr;
    HHOOK cbtHook = nullptr;
    DWORD showMs = 0;
};
BenchState g_bench;

// The template list's first paint ends the measurement: the dialog around
// it painted first (its heading), the rows with their icons are drawn here.
LRESULT CALLBACK ListViewSpy(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = CallWindowProcW(g_bench.listViewProc, hwnd, message, wParam, lParam);
    if (message == WM_PAINT && g_bench.paintedMs < 0) {
        g_bench.paintedMs = bench::MsSince(g_bench.openStart);
        if (!g_bench.showMs) PostMessageW(GetParent(hwnd), WM_COMMAND, IDCANCEL, 0);
    }
    return result;
}

LRESULT CALLBACK CbtHook(int code, WPARAM wParam, LPARAM lParam) {
    HWND hwnd = (HWND)wParam;
    if (code == HCBT_CREATEWND && !g_bench.listView) {
        wchar_t cls[64] = {};
        GetClassNameW(hwnd, cls, 64);
        if (wcscmp(cls, WC_LISTVIEWW) == 0) {  // the dialogs' only list view
            g_bench.listView = hwnd;
            g_bench.listViewProc = (WNDPROC)SetWindowLongPtrW(hwnd, GWLP_WNDPROC, (LONG_PTR)ListViewSpy);
        }
    }
    return CallNextHookEx(g_bench.cbtHook, code, wParam, lParam);
}

void CALLBACK CloseShownDialog(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    HWND front = GetForegroundWindow();
    PostMessageW(front, WM_COMMAND, IDCANCEL, 0);
    PostMessageW(front, WM_COMMAND, 40076, 0);  // the field editor's Cancel
}

// `count` templates of three fields, each with its own 32 x 32 icon.
void WriteTemplates(const std::wstring& folder, int count) {
    TemplateFieldList fields;
    const FieldType types[] = {FieldType::Check, FieldType::Text, FieldType::Date};
    for (FieldType type : types) {
        FieldDef field;
        field.type = type;
        field.SetName(fieldTypeName(type).c_str());
        fields.Add(field);
    }
    PlanarImage icon;
    icon.Allocate(32, 32);
    for (int i = 0; i < count; ++i) {
        for (int p = 0; p < icon.PixelCount(); ++p) {
            icon.red[p] = (unsigned char)(i * 7 + p);
            icon.green[p] = (unsigned char)(i * 3);
            icon.blue[p] = (unsigned char)p;
            icon.alpha[p] = 255;
        }
        wchar_t path[MAX_PATH];
        swprintf(path, MAX_PATH, L"%lsTemplate %04d.zvt", folder.c_str(), i);
        writeTemplateFile(path, fields, icon);
    }
}

// Opens one dialog and returns the milliseconds to its painted list.
double TimeOpen(bool manager) {
    g_bench.listView = nullptr;
    g_bench.paintedMs = -1;
    QueryPerformanceCounter(&g_bench.openStart);
    if (manager) {
        TemplatesManagerRequest request = {hLangModule, 1};
        RunTemplatesManager(nullptr, request);
    } else {
        NewListRequest request = {};
        lstrcpyW(request.categoryFolder, L"C:\\zvbench\\");
        RunNewListDialog(nullptr, request);
    }
    return g_bench.paintedMs;
}

int Show(const std::wstring& kind, const std::wstring& folder) {
    SetTimer(nullptr, 0, g_bench.showMs, CloseShownDialog);
    if (kind == L"new") return TimeOpen(false) >= 0 ? 0 : 1;
    if (kind == L"manager") return TimeOpen(true) >= 0 ? 0 : 1;
    if (kind == L"editor") {
        TemplateEditRequest request = {};
        request.mode = TemplateEditOpen;
        swprintf(request.path, MAX_PATH, L"%lsShopping.zvt", folder.c_str());
        return RunTemplateEditor(nullptr, request) == 1 ? 0 : 1;
    }
    FieldDef field;
    field.type = FieldType::Priority;
    field.SetName(L"Level");
    editField(nullptr, field);
    return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bench::Start(ICC_LISTVIEW_CLASSES | ICC_UPDOWN_CLASS | ICC_BAR_CLASSES);
    g_appSettings.LoadSettings();
    g_bench.cbtHook = SetWindowsHookExW(WH_CBT, CbtHook, nullptr, GetCurrentThreadId());

    // The bench points TemplatePath at its own folder and puts the old value back.
    wchar_t saved[MAX_PATH + 2] = {};
    g_registryConfig.GetTemplatePath(saved);
    int status = 0;
    if (argc >= 4 && wcscmp(argv[1], L"--show") == 0) {
        g_bench.showMs = argc >= 5 ? (DWORD)_wtoi(argv[4]) : 4000;
        g_registryConfig.SetTemplatePath(argv[3]);
        status = Show(argv[2], argv[3]);
    } else {
        const int count = argc >= 2 ? _wtoi(argv[1]) : 1000;
        CreateDirectoryW(L"C:\\zvbench", nullptr);
        const std::wstring folder = L"C:\\zvbench\\templates\\";
        CreateDirectoryW(folder.c_str(), nullptr);
        WriteTemplates(folder, count);
        g_registryConfig.SetTemplatePath(folder.c_str());
        std::printf("templates folder of %d templates with 32 x 32 icons (%d dpi); wall ms to the painted list\n",
                    count, ScreenDpiX());
        for (bool manager : {false, true}) {
            const double cold = TimeOpen(manager);
            std::vector<double> runs;
            for (int i = 0; i < 10; ++i) runs.push_back(TimeOpen(manager));
            std::sort(runs.begin(), runs.end());
            std::printf("  %-22s first %7.1f   best %7.1f   median %7.1f   worst %7.1f\n",
                        manager ? "templates manager" : "new list dialog", cold, runs[0], runs[5], runs[9]);
            if (runs[5] < 0) status = 1;
        }
    }
    g_registryConfig.SetTemplatePath(saved);
    UnhookWindowsHookEx(g_bench.cbtHook);
    return status;
}
