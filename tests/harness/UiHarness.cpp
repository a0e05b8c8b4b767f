// The UI test harness: a thread timer runs the script's steps inside whatever
// modal loop is running, a CBT hook answers message boxes, and a watchdog
// closes what a stuck run left open.
#include "tests/harness/UiHarness.h"

#include <commctrl.h>

#include <deque>
#include <set>

#include "platform/Platform.h"
#include "tests/framework/ZvTest.h"

namespace ui {
namespace {

const UINT kTickMs = 10;
const DWORD kCloseGraceMs = 300;
const int kMessageBoxTextId = 0xFFFF;
const int kMessageBoxIconId = 0x0440;
const wchar_t kAnsweredProp[] = L"ZvHarnessAnswered";

struct RunState {
    Script* script = nullptr;
    const char* file = "";
    int line = 0;
    bool modeless = false;        // RunWindow: done when every step ran and the queue is idle
    size_t next = 0;              // index of the next step
    DWORD phaseStart = 0;         // when the current wait (or the abort) began
    bool finished = false;        // every step ran (RunWindow: and the queue was idle)
    bool aborting = false;        // closing what the run left open
    std::set<HWND> before{};      // top-level windows that existed before the run
    std::deque<int> answers{};
    bool inTick = false;
    UINT_PTR timer = 0;
};

struct HarnessState {
    RunState* run = nullptr;
    HHOOK cbtHook = nullptr;
    std::vector<MessageBoxRecord> boxes;
    std::vector<std::string> problems;
} g_harness;

void Report(const RunState& run, const std::string& why) {
    if (run.script->expectProblems) g_harness.problems.push_back(why);
    else zvtest::Fail(run.file, run.line, why);
}

std::wstring ClassOf(HWND hwnd) {
    wchar_t buf[64] = L"";
    GetClassNameW(hwnd, buf, 64);
    return buf;
}

std::wstring TextOf(HWND hwnd) {
    std::wstring s(hwnd ? GetWindowTextLengthW(hwnd) + 1 : 1, L'\0');
    s.resize(hwnd ? GetWindowTextW(hwnd, &s[0], (int)s.size()) : 0);
    return s;
}

bool IsMessageBox(HWND hwnd) {
    return ClassOf(hwnd) == L"#32770" && ClassOf(GetDlgItem(hwnd, kMessageBoxTextId)) == L"Static";
}

// The thread's top-level windows, topmost first.
std::vector<HWND> ThreadWindows() {
    std::vector<HWND> out;
    for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT))
        if (GetWindowThreadProcessId(w, nullptr) == GetCurrentThreadId()) out.push_back(w);
    return out;
}

template <class Pred> HWND FirstThreadWindow(Pred pred) {
    for (HWND w : ThreadWindows())
        if (pred(w)) return w;
    return nullptr;
}

bool IsBar(HWND hwnd) { return ClassOf(hwnd) == TOOLBARCLASSNAMEW; }
bool IsOpenMenu(HWND hwnd) { return IsWindowVisible(hwnd) && ClassOf(hwnd) == L"#32768"; }

// The window steps act on: the active one, else the topmost visible and
// enabled top-level window of the thread (menus, bars and boxes aside).
HWND FrontWindow() {
    HWND active = GetActiveWindow();
    if (active && IsWindowVisible(active) && !IsMessageBox(active)) return active;
    return FirstThreadWindow([](HWND w) {
        return IsWindowVisible(w) && IsWindowEnabled(w) && !IsMessageBox(w) && !IsBar(w) && !IsOpenMenu(w);
    });
}

// By style: at activation the box is not yet shown.
bool HasButton(HWND box, int id) { return (GetWindowLongW(GetDlgItem(box, id), GWL_STYLE) & WS_VISIBLE) != 0; }

// The program asks with OK, Yes/No and Yes/No/Cancel boxes only.
UINT ButtonSet(HWND box) {
    return !HasButton(box, IDYES) ? MB_OK : HasButton(box, IDCANCEL) ? MB_YESNOCANCEL : MB_YESNO;
}

UINT IconOf(HWND box) {
    HICON shown = (HICON)SendDlgItemMessageW(box, kMessageBoxIconId, STM_GETICON, 0, 0);
    const struct { LPCWSTR id; UINT style; } icons[] = {{IDI_EXCLAMATION, MB_ICONEXCLAMATION},
        {IDI_QUESTION, MB_ICONQUESTION}, {IDI_ASTERISK, MB_ICONINFORMATION}, {IDI_HAND, MB_ICONERROR}};
    for (auto& i : icons)
        if (LoadIconW(nullptr, i.id) == shown) return i.style;
    return 0;
}

void AnswerMessageBox(HWND box) {
    if (GetPropW(box, kAnsweredProp)) return;
    SetPropW(box, kAnsweredProp, (HANDLE)1);
    MessageBoxRecord rec{TextOf(GetDlgItem(box, kMessageBoxTextId)), TextOf(box), ButtonSet(box), IconOf(box)};
    rec.answer = rec.buttons == MB_OK ? IDOK : IDYES;
    RunState* run = g_harness.run;
    if (run && !run->answers.empty()) {
        int wanted = run->answers.front();
        run->answers.pop_front();
        if (HasButton(box, wanted)) rec.answer = wanted;
        else
            Report(*run, "scripted answer " + std::to_string(wanted) + " is not a button of the message box " +
                             zvtest::Show(rec.text));
    }
    g_harness.boxes.push_back(rec);
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(rec.answer, BN_CLICKED), (LPARAM)GetDlgItem(box, rec.answer));
}

LRESULT CALLBACK CbtHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && IsMessageBox((HWND)wParam)) AnswerMessageBox((HWND)wParam);
    return CallNextHookEx(g_harness.cbtHook, code, wParam, lParam);
}

bool QueueBusy() { return HIWORD(GetQueueStatus(QS_POSTMESSAGE | QS_INPUT | QS_SENDMESSAGE)) != 0; }

std::vector<HWND> WindowsOfRun(const RunState& run) {
    std::vector<HWND> out;
    for (HWND w : ThreadWindows())
        if (!run.before.count(w) && IsWindowVisible(w) && !IsBar(w)) out.push_back(w);
    return out;
}

void StartAbort(RunState& run, const std::string& why) {
    Report(run, why);
    run.aborting = true;
    run.phaseStart = GetTickCount();
    EndMenu();
    for (HWND w : WindowsOfRun(run)) PostMessageW(w, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
}

// After the grace time, whatever the run opened is ended by force.
void ContinueAbort(RunState& run) {
    if (GetTickCount() - run.phaseStart < kCloseGraceMs) return;
    EndMenu();
    for (HWND w : WindowsOfRun(run)) {
        if (ClassOf(w) == L"#32770") EndDialog(w, -1);
        else DestroyWindow(w);
    }
    run.finished = true;
}

std::string StepName(const RunState& run, size_t index) {
    std::string s = "step " + std::to_string(index + 1);
    const std::wstring& what = run.script->steps[index].what;
    if (!what.empty()) s += " (" + zvtest::Show(what) + ")";
    return s;
}

void Tick(RunState& run) {
    if (run.aborting) return ContinueAbort(run);
    if (run.finished || FirstThreadWindow(IsMessageBox) || QueueBusy()) return;
    Script& script = *run.script;
    DWORD now = GetTickCount();
    if (run.next >= script.steps.size()) {
        if (run.modeless) run.finished = true;
        else if (now - run.phaseStart > script.timeoutMs)
            StartAbort(run, "the dialog did not end within " + std::to_string(script.timeoutMs) +
                                " ms after the last step; closed by the harness");
        return;
    }
    Dlg d{FrontWindow()};
    Script::Entry& step = script.steps[run.next];
    if (!d.hwnd || (step.until && !step.until(d))) {
        if (now - run.phaseStart > script.timeoutMs)
            StartAbort(run, StepName(run, run.next) + " still waiting after " + std::to_string(script.timeoutMs) +
                                " ms; closed by the harness");
        return;
    }
    if (!step.until) step.run(d);
    ++run.next;
    run.phaseStart = GetTickCount();
}

// A step that runs a nested message loop gets no tick of its own meanwhile.
void CALLBACK TimerProc(HWND, UINT, UINT_PTR, DWORD) {
    RunState* run = g_harness.run;
    if (!run || run->inTick) return;
    run->inTick = true;
    Tick(*run);
    run->inTick = false;
}

void BeginRun(RunState& run) {
    if (!g_harness.cbtHook) g_harness.cbtHook = SetWindowsHookExW(WH_CBT, CbtHook, nullptr, GetCurrentThreadId());
    // A quit request left by an earlier test would end this run's loop at once.
    MSG stale;
    PeekMessageW(&stale, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    run.answers.assign(run.script->answers.begin(), run.script->answers.end());
    run.phaseStart = GetTickCount();
    for (HWND w : ThreadWindows()) run.before.insert(w);
    g_harness.boxes.clear();
    g_harness.problems.clear();
    g_harness.run = &run;
    run.timer = SetTimer(nullptr, 0, kTickMs, TimerProc);
}

// Reports what the run left undone, then pumps until the queue is idle. A
// WM_QUIT met on the way stays for the caller to see; each run starts by
// dropping one left over from before.
void EndRun(RunState& run) {
    KillTimer(nullptr, run.timer);
    g_harness.run = nullptr;
    if (!run.aborting && run.next < run.script->steps.size())
        Report(run, "the window ended before " + StepName(run, run.next) + " ran (" +
                         std::to_string(run.script->steps.size() - run.next) + " step(s) left)");
    if (!run.answers.empty())
        Report(run, std::to_string(run.answers.size()) + " scripted message-box answer(s) were not used");
    MSG msg, quit = {};
    for (int i = 0; i < 10000 && PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (msg.message == WM_QUIT) quit = msg;
        else {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    if (quit.message == WM_QUIT) PostQuitMessage((int)quit.wParam);
}

// A key's repeat count and scan code; a key up also has its previous-state and transition bits.
LPARAM KeyLParam(UINT vk, bool up) {
    return 1 | (LPARAM)(MapVirtualKeyW(vk, MAPVK_VK_TO_VSC) & 0xFF) << 16 | (up ? (LPARAM)0xC0000000 : 0);
}

}  // namespace

static HWND KeyTarget(HWND hwnd) { return GetFocus() ? GetFocus() : hwnd; }

void Dlg::Key(UINT vk) {
    PostMessageW(KeyTarget(hwnd), WM_KEYDOWN, vk, KeyLParam(vk, false));
    PostMessageW(KeyTarget(hwnd), WM_KEYUP, vk, KeyLParam(vk, true));
}
void Dlg::Char(wchar_t ch) { PostMessageW(KeyTarget(hwnd), WM_CHAR, ch, 1); }
void Dlg::Type(const wchar_t* text) { while (*text) Char(*text++); }
void Dlg::SoftKey(SoftKeySide side) { Key(side == Left ? VK_F1 : VK_F2); }
void Dlg::Back() { Key(VK_ESCAPE); }
void Dlg::Enter() { Key(VK_RETURN); }
void Dlg::Command(UINT id) { PostMessageW(hwnd, WM_COMMAND, MAKEWPARAM(id, 0), 0); }

void Dlg::Tap(HWND target, int x, int y) {
    if (!target) return;
    LPARAM at = MAKELPARAM(x, y);
    PostMessageW(target, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(target, WM_LBUTTONUP, 0, at);
    // An up-down control keeps its hot state after a click without a
    // mouse-leave and then steps twice on the next arrow key.
    PostMessageW(target, WM_MOUSELEAVE, 0, 0);
}
void Dlg::Tap(int ctrlId, int x, int y) { Tap(Item(ctrlId), x, y); }
void Dlg::TapCenter(int ctrlId) {
    RECT rc = ClientRect(ctrlId);
    Tap(ctrlId, rc.right / 2, rc.bottom / 2);
}
void Dlg::TapCell(int listId, int row, int col) {
    HWND list = Item(listId);
    RECT rc;
    if (!ListView_GetSubItemRect(list, row, col, LVIR_BOUNDS, &rc)) return;
    if (col == 0) rc.right = rc.left + (int)SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0);
    Tap(list, (rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
}
void Dlg::SetFocusTo(int ctrlId) { SetFocus(Item(ctrlId)); }

// The bar is shown in the window's frame: a click there is a non-client
// click at a screen point of the band.
void Dlg::TapSoftKey(SoftKeySide side) {
    HWND bar = MenuBar();
    if (!bar) return;
    RECT band;
    GetWindowRect(bar, &band);
    POINT pt = {side == Left ? band.left + (band.right - band.left) / 4 : band.right - (band.right - band.left) / 4,
                (band.top + band.bottom) / 2};
    LRESULT hit = SendMessageW(hwnd, WM_NCHITTEST, 0, MAKELPARAM(pt.x, pt.y));
    PostMessageW(hwnd, WM_NCLBUTTONDOWN, hit, MAKELPARAM(pt.x, pt.y));
    PostMessageW(hwnd, WM_NCLBUTTONUP, hit, MAKELPARAM(pt.x, pt.y));
}

HWND Dlg::Item(int ctrlId) const { return ctrlId ? GetDlgItem(hwnd, ctrlId) : hwnd; }
int Dlg::FocusId() const { return GetFocus() ? GetDlgCtrlID(GetFocus()) : 0; }
std::wstring Dlg::Text(int ctrlId) const { return TextOf(Item(ctrlId)); }
bool Dlg::Visible(int ctrlId) const { return IsWindowVisible(Item(ctrlId)) != FALSE; }
RECT Dlg::ClientRect(int ctrlId) const {
    RECT rc = {};
    GetClientRect(Item(ctrlId), &rc);
    return rc;
}

int Dlg::ListCount(int listId) const { return ListView_GetItemCount(Item(listId)); }
std::wstring Dlg::ListText(int listId, int row, int col) const {
    wchar_t buf[1024] = L"";
    ListView_GetItemText(Item(listId), row, col, buf, 1024);
    return buf;
}
int Dlg::ListSelectionMark(int listId) const { return ListView_GetSelectionMark(Item(listId)); }
int Dlg::ListFocused(int listId) const { return ListView_GetNextItem(Item(listId), -1, LVNI_FOCUSED); }

HWND Dlg::MenuBar() const { return FindSoftKeyBar(hwnd); }

// The bar's first or last button; its data is the popup menu it opens.
static TBBUTTON SoftKeyButton(HWND bar, SoftKeySide side) {
    TBBUTTON button = {};
    int count = (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    if (count > 0) SendMessageW(bar, TB_GETBUTTON, side == Left ? 0 : count - 1, (LPARAM)&button);
    return button;
}

int Dlg::SoftKeyCommand(SoftKeySide side) const { return SoftKeyButton(MenuBar(), side).idCommand; }
std::wstring Dlg::SoftKeyText(SoftKeySide side) const {
    wchar_t buf[256] = L"";
    if (int id = SoftKeyCommand(side)) SendMessageW(MenuBar(), TB_GETBUTTONTEXTW, id, (LPARAM)buf);
    return buf;
}
HMENU Dlg::SoftKeyMenu(SoftKeySide side) const { return (HMENU)SoftKeyButton(MenuBar(), side).dwData; }
bool Dlg::MenuOpen() const { return FirstThreadWindow(IsOpenMenu) != nullptr; }
std::vector<std::wstring> Dlg::MenuTexts(HMENU menu) {
    std::vector<std::wstring> out;
    int count = menu ? GetMenuItemCount(menu) : 0;
    for (int pos = 0; pos < count; ++pos) {
        wchar_t buf[512] = L"";
        MENUITEMINFOW mii = {};
        mii.cbSize = sizeof mii;
        mii.fMask = MIIM_FTYPE;
        GetMenuItemInfoW(menu, pos, TRUE, &mii);
        GetMenuStringW(menu, pos, buf, 512, MF_BYPOSITION);
        out.push_back((mii.fType & MFT_SEPARATOR) ? std::wstring(L"-") : std::wstring(buf));
    }
    return out;
}

Script& Script::Step(StepFn fn) {
    steps.push_back({std::move(fn), nullptr, L""});
    return *this;
}
Script& Script::WaitFor(const wchar_t* className, const wchar_t* title) {
    std::wstring cls = className, ttl = title ? title : L"";
    bool anyTitle = title == nullptr;
    auto until = [cls, ttl, anyTitle](Dlg& d) {
        HWND w = GetActiveWindow();
        if (!w || !IsWindowVisible(w) || ClassOf(w) != cls || (!anyTitle && TextOf(w) != ttl)) return false;
        d.hwnd = w;
        return true;
    };
    steps.push_back({nullptr, until, L"wait for " + cls + (anyTitle ? L"" : L" \"" + ttl + L"\"")});
    return *this;
}
Script& Script::WaitUntil(std::function<bool(Dlg&)> cond) {
    steps.push_back({nullptr, std::move(cond), L"wait until"});
    return *this;
}
Script& Script::Answer(int id) {
    answers.push_back(id);
    return *this;
}
Script& Script::ExpectProblems() {
    expectProblems = true;
    return *this;
}

INT_PTR RunModal(Script& script, const std::function<INT_PTR()>& open, const char* file, int line) {
    RunState run{&script, file, line, false};
    BeginRun(run);
    INT_PTR result = open();
    EndRun(run);
    return result;
}

bool RunWindow(Script& script, HWND hwnd, const char* file, int line) {
    RunState run{&script, file, line, true};
    BeginRun(run);
    DWORD start = GetTickCount();
    DWORD limit = script.timeoutMs * (DWORD)(script.steps.size() + 1);
    MSG msg;
    while (!run.finished && IsWindow(hwnd)) {
        if (GetTickCount() - start > limit && !run.aborting)
            StartAbort(run, "the window script did not finish within " + std::to_string(limit) + " ms");
        BOOL got = GetMessageW(&msg, nullptr, 0, 0);
        if (got <= 0) break;  // WM_QUIT from the window's exit is taken here, not left for later tests
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    EndRun(run);
    return IsWindow(hwnd) != FALSE;
}

const std::vector<MessageBoxRecord>& MessageBoxes() { return g_harness.boxes; }
const std::vector<std::string>& LastRunProblems() { return g_harness.problems; }

}  // namespace ui
