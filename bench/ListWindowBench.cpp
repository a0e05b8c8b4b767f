// zvlistbench: drives the real list window on a generated list and times
// what a user waits for: opening to the first painted rows, sorting,
// toggling a check, adding an item (the item editor confirmed at once),
// deleting, checking all and saving.
//
//   zvlistbench.exe [items]            time a list of `items` (default 10000)
//   zvlistbench.exe --show PATH [ms] [fit] [row=N]
//                                      open PATH and close it after ms
//                                      (default 4000), for screenshots; fit
//                                      gives Fit Columns, row=N focuses row N
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "bench/BenchCommon.h"
#include "document/ListFile.h"
#include "listwindow/ListWindow.h"
#include "listwindow/ListSort.h"
#include "listwindow/ListWindowState.h"
#include "settings/AppSettings.h"

namespace {

struct BenchState {
    LARGE_INTEGER openStart = {};
    double firstPaintMs = -1;
    HWND listView = nullptr;
    WNDPROC listViewProc = nullptr;
    HWND listWindow = nullptr;
    HWND editor = nullptr;
    LARGE_INTEGER editorClosed = {};
    HHOOK cbtHook = nullptr;
    bool ran = false;
    DWORD showMs = 0;
    bool showFit = false;
    int showRow = -1;
    bool shown = false;
    bool warming = false;  // the first window of the process: not one the user waits for twice
    std::vector<std::pair<std::string, double>> figures;
    std::vector<double> cpu;
    double openCpuStart = 0;
    double firstPaintCpu = -1;
};
BenchState g_bench;

// CPU time of this thread: what the program itself spends, whatever else
// the machine is doing (the wall-clock figures include waiting for it).
double ThreadCpuMs() {
    FILETIME created, ended, kernel, user;
    if (!GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user)) return 0;
    ULARGE_INTEGER k = {{kernel.dwLowDateTime, kernel.dwHighDateTime}};
    ULARGE_INTEGER u = {{user.dwLowDateTime, user.dwHighDateTime}};
    return double(k.QuadPart + u.QuadPart) / 10000.0;
}

LRESULT CALLBACK ListViewSpy(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = CallWindowProcW(g_bench.listViewProc, hwnd, message, wParam, lParam);
    if (message == WM_PAINT && g_bench.firstPaintMs < 0) {
        g_bench.firstPaintMs = bench::MsSince(g_bench.openStart);
        g_bench.firstPaintCpu = ThreadCpuMs() - g_bench.openCpuStart;
    }
    return result;
}

// Watches window creation: the list view gets a spy on its painting, and an
// item editor is confirmed as soon as it is shown.
LRESULT CALLBACK CbtHook(int code, WPARAM wParam, LPARAM lParam) {
    HWND hwnd = (HWND)wParam;
    wchar_t cls[64] = {};
    if (code == HCBT_CREATEWND) {
        GetClassNameW(hwnd, cls, 64);
        if (!g_bench.listView && wcscmp(cls, WC_LISTVIEWW) == 0 && !g_bench.listWindow) {
            g_bench.listView = hwnd;
            g_bench.listViewProc = (WNDPROC)SetWindowLongPtrW(hwnd, GWLP_WNDPROC, (LONG_PTR)ListViewSpy);
        }
    } else if (code == HCBT_ACTIVATE) {
        GetClassNameW(hwnd, cls, 64);
        if (g_bench.listWindow && hwnd != g_bench.listWindow && wcscmp(cls, L"#32770") == 0 &&
            GetWindow(hwnd, GW_OWNER) == g_bench.listWindow && !g_bench.editor) {
            g_bench.editor = hwnd;
            PostMessageW(hwnd, WM_COMMAND, IDOK, 0);
        }
    } else if (code == HCBT_DESTROYWND && hwnd == g_bench.editor && hwnd) {
        QueryPerformanceCounter(&g_bench.editorClosed);
    }
    return CallNextHookEx(g_bench.cbtHook, code, wParam, lParam);
}

void SelectRow(int row) {
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(g_bench.listView, LVM_SETITEMSTATE, (WPARAM)row, (LPARAM)&item);
    SendMessageW(g_bench.listView, LVM_SETSELECTIONMARK, 0, row);
    SetFocus(g_bench.listView);
}

// One command as the user gives it, timed until the window has repainted.
double g_lastCpu = 0;
double g_bestAfterEditor = 1e9;  // add: from the editor's end to the repainted list
double TimeCommand(UINT id, UINT code = 0) {
    double cpu = ThreadCpuMs();
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    SendMessageW(g_bench.listWindow, WM_COMMAND, MAKEWPARAM(id, code), 0);
    if (IsWindow(g_bench.listWindow)) {
        UpdateWindow(g_bench.listWindow);
        UpdateWindow(g_bench.listView);
    }
    g_lastCpu = ThreadCpuMs() - cpu;
    if (g_bench.editorClosed.QuadPart) {
        double after = bench::MsSince(g_bench.editorClosed);
        if (after < g_bestAfterEditor) g_bestAfterEditor = after;
    }
    return bench::MsSince(start);
}

void Record(const char* name, double ms, double cpu = -1) {
    g_bench.figures.push_back({name, ms});
    g_bench.cpu.push_back(cpu < 0 ? g_lastCpu : cpu);
}

// Each operation runs several times; the least wall time is the figure
// least disturbed by whatever else the machine runs at that moment.
constexpr int kRepeats = 5;

template <class Setup>
void Measure(const char* name, UINT id, Setup setup) {
    double best = 1e9, bestCpu = 1e9;
    for (int i = 0; i < kRepeats && IsWindow(g_bench.listWindow); ++i) {
        setup();
        double ms = TimeCommand(id);
        if (ms < best) best = ms;
        if (g_lastCpu < bestCpu) bestCpu = g_lastCpu;
    }
    Record(name, best, bestCpu);
}

// The list view's own costs, one message at a time (ZV_BENCH_PARTS=1).
template <class Fn>
void Part(const char* name, Fn fn) {
    double best = 1e9;
    for (int i = 0; i < kRepeats; ++i) {
        LARGE_INTEGER t;
        QueryPerformanceCounter(&t);
        fn();
        double ms = bench::MsSince(t);
        if (ms < best) best = ms;
    }
    Record(name, best, -1);
}

void MeasureParts() {
    HWND list = g_bench.listView;
    int n = (int)SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
    Part("part: repaint list view", [&] { InvalidateRect(list, nullptr, TRUE); UpdateWindow(list); });
    Part("part: repaint title strip", [&] { InvalidateRect(g_bench.listWindow, nullptr, FALSE); UpdateWindow(g_bench.listWindow); });
    Part("part: LVM_SETITEMCOUNT", [&] { SendMessageW(list, LVM_SETITEMCOUNT, n, LVSICF_NOSCROLL); });
    Part("part: LVM_DELETEALLITEMS + LVM_SETITEMCOUNT", [&] {
        SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
        SendMessageW(list, LVM_SETITEMCOUNT, n, 0);
    });
    Part("part: focus cleared through item -1", [&] {
        LVITEMW state = {};
        state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(list, LVM_SETITEMSTATE, (WPARAM)-1, (LPARAM)&state);
    });
    Part("part: clear selection+focus, mark -1, top", [&] { ResetRowView(list, n > 0); });
    Part("part: LVM_DELETEITEM", [&] { SendMessageW(list, LVM_DELETEITEM, 3, 0); });
    Part("part: sortListItems by text", [&] { sortListItems(g_listWindow.doc.items, 1, FieldType::Text, true); });
    Part("part: sortListItems by number", [&] { sortListItems(g_listWindow.doc.items, 2, FieldType::Number, true); });
    Part("part: sortListItems by date", [&] { sortListItems(g_listWindow.doc.items, 3, FieldType::Date, true); });
    Part("part: FillRows", [&] { FillRows(); });
    Part("part: readListFile (no backup)", [&] {
        ListDocument doc;
        ReadListOptions options;
        options.makeBackup = false;
        readListFile(g_listWindow.request->path, doc, options);
    });
    SendMessageW(list, LVM_SETITEMCOUNT, n, 0);
    Part("part: LVM_GETITEMSTATE x 1000", [&] { for (int i = 0; i < 1000; ++i) SendMessageW(list, LVM_GETITEMSTATE, 5, LVIS_FOCUSED); });
    UpdateWindow(list);
}

void RunSteps() {
    g_bench.ran = true;
    if (getenv("ZV_BENCH_PARTS")) MeasureParts();
    auto none = [] {};
    Record("open to first paint", g_bench.firstPaintMs, g_bench.firstPaintCpu);
    Measure("sort by text (each time reversing)", IDM_SORT_BASE + 1, none);
    Measure("sort by number", IDM_SORT_BASE + 2, none);
    Measure("sort by date", IDM_SORT_BASE + 3, none);
    Measure("toggle (rows sorted by date: one row redrawn)", IDOK, [] { SelectRow(5); });
    TimeCommand(IDM_SORT_BASE + 0);
    Measure("toggle (rows sorted by the check: re-sort)", IDOK, [] { SelectRow(5); });
    auto resetEditor = [] {
        g_bench.editor = nullptr;
        g_bench.editorClosed.QuadPart = 0;
    };
    Measure("add, with the item editor (total)", IDM_ADD_ITEM, resetEditor);
    Record("  of which after the editor closed (best)", g_bestAfterEditor, -1);
    Measure("delete", IDM_DELETE_ITEM, [] { SelectRow(7); });
    Measure("check all", IDM_CHECK_ALL, none);
    Measure("uncheck all", IDM_UNCHECK_ALL, none);
    TimeCommand(IDM_SORT_BASE + 1);
    g_bestAfterEditor = 1e9;
    Measure("add to a text-sorted list, with the item editor", IDM_ADD_ITEM, resetEditor);
    Record("  of which after the editor closed (best)", g_bestAfterEditor, -1);
    Record("save (window closes)", TimeCommand(IDM_SAVE));
}

void CALLBACK StepTimer(HWND, UINT, UINT_PTR id, DWORD) {
    if (!g_bench.listWindow) g_bench.listWindow = g_bench.listView ? GetParent(g_bench.listView) : nullptr;
    if (g_bench.showMs) {
        if (!g_bench.shown && g_bench.firstPaintMs >= 0 && bench::MsSince(g_bench.openStart) > 300) {
            // The user's first moves: Fit Columns, and the focus on a row.
            g_bench.shown = true;
            if (g_bench.showFit) SendMessageW(g_bench.listWindow, WM_COMMAND, IDM_AUTOSIZE_COLUMNS, 0);
            if (g_bench.showRow >= 0) SelectRow(g_bench.showRow);
        }
        if (g_bench.firstPaintMs >= 0 && bench::MsSince(g_bench.openStart) > g_bench.showMs) {
            g_listWindow.modified = 0;  // close without the question
            KillTimer(nullptr, id);
            PostMessageW(g_bench.listWindow, WM_COMMAND, IDCANCEL, 0);
        }
        return;
    }
    if (g_bench.ran || g_bench.firstPaintMs < 0 || !g_bench.listWindow) return;
    KillTimer(nullptr, id);
    if (g_bench.warming) {
        PostMessageW(g_bench.listWindow, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    RunSteps();
}

// A list of `count` items over the usual field types.
void WriteSampleList(const wchar_t* path, int count) {
    ListDocument doc;
    const struct {
        const wchar_t* name;
        FieldType type;
        int width;
    } fields[] = {{L"Done", FieldType::Check, 24}, {L"Item", FieldType::Text, 80}, {L"Qty", FieldType::Number, 36},
                  {L"Due", FieldType::Date, 70},   {L"Level", FieldType::Priority, 40}};
    for (const auto& f : fields) {
        FieldDef field;
        field.SetName(f.name);
        field.type = f.type;
        field.columnWidth = f.width;
        doc.fields.push_back(field);
    }
    static const wchar_t* words[] = {L"apples", L"Bread", L"milk", L"Tea", L"rice", L"Soap", L"eggs", L"Butter"};
    TextLayout layout = listTextLayout();
    for (int i = 0; i < count; ++i) {
        ListItem item;
        item.fieldCount = doc.fieldCount();
        item.values.resize(doc.fields.size());
        item.serial = doc.nextSerial++;
        item.ordinal = i;
        unsigned r = unsigned(i) * 2654435761u;
        wchar_t text[64];
        swprintf(text, 64, L"%ls %u", words[r % 8], (r >> 8) % 1000);
        item.values[0].storedType = FieldType::Check;
        item.values[0].choice = int(r >> 3) & 1;
        item.values[1].storedType = FieldType::Text;
        item.values[1].text = text;
        swprintf(text, 64, L"%u.%u", (r >> 12) % 100, (r >> 4) % 10);
        item.values[2].storedType = FieldType::Number;
        item.values[2].text = text;
        item.values[3].storedType = FieldType::Date;
        item.values[3].time = {WORD(2000 + (r >> 5) % 30), WORD(1 + (r >> 9) % 12), 0, WORD(1 + (r >> 13) % 28), 0, 0, 0, 0};
        item.values[4].storedType = FieldType::Priority;
        item.values[4].choice = int((r >> 7) % 3);
        for (int c = 0; c < 5; ++c) buildDisplayText(item.values[(size_t)c], doc.fields[(size_t)c].type, layout);
        doc.items.push_back(std::move(item));
    }
    writeListFile(path, doc);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bench::Start(ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES | ICC_BAR_CLASSES);
    g_appSettings.LoadSettings();

    std::wstring path;
    int items = 10000;
    if (argc >= 3 && wcscmp(argv[1], L"--show") == 0) {
        path = argv[2];
        g_bench.showMs = argc >= 4 ? (DWORD)_wtoi(argv[3]) : 4000;
        for (int i = 4; i < argc; ++i) {
            if (wcscmp(argv[i], L"fit") == 0) g_bench.showFit = true;
            if (wcsncmp(argv[i], L"row=", 4) == 0) g_bench.showRow = _wtoi(argv[i] + 4);
        }
    } else {
        if (argc >= 2) items = _wtoi(argv[1]);
        CreateDirectoryW(L"C:\\zvbench", nullptr);
        path = L"C:\\zvbench\\Bench list.zvl";
        WriteSampleList(path.c_str(), items);
    }

    g_bench.cbtHook = SetWindowsHookExW(WH_CBT, CbtHook, nullptr, GetCurrentThreadId());
    ListOpenRequest request = {};
    request.module = hInstance;
    lstrcpynW(request.path, path.c_str(), MAX_PATH);
    double coldOpen = -1;
    if (!g_bench.showMs) {
        // The program's main window exists before any list is opened; here
        // a first opening pays for what the first window of a process costs.
        g_bench.warming = true;
        SetTimer(nullptr, 0, 10, StepTimer);
        QueryPerformanceCounter(&g_bench.openStart);
        RunListWindow(nullptr, request);
        coldOpen = g_bench.firstPaintMs;
        g_bench.warming = false;
        g_bench.listView = g_bench.listWindow = nullptr;
        g_bench.firstPaintMs = -1;
    }
    SetTimer(nullptr, 0, 10, StepTimer);
    QueryPerformanceCounter(&g_bench.openStart);
    g_bench.openCpuStart = ThreadCpuMs();
    INT_PTR result = RunListWindow(nullptr, request);
    UnhookWindowsHookEx(g_bench.cbtHook);
    if (g_bench.showMs) return result == 1 ? 0 : 1;

    std::printf("list window with %d items (%d dpi)              wall ms   thread CPU ms\n", items, ScreenDpiX());
    std::printf("  %-45s %8.1f\n", "first open in the process (cold)", coldOpen);
    for (size_t i = 0; i < g_bench.figures.size(); ++i)
        std::printf("  %-45s %8.1f %8.1f\n", g_bench.figures[i].first.c_str(), g_bench.figures[i].second, g_bench.cpu[i]);
    std::printf("saved: %d\n", (int)request.saved);
    return request.saved == 1 ? 0 : 1;
}
