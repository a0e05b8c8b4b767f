// UI test harness: runs a real dialog or window in-process and drives it with
// the same keys, soft keys and taps a user gives, step by step, from a thread
// timer inside the dialog's own modal loop.
//
//   ui::Script s;
//   s.Step([](ui::Dlg& d) { d.Key(VK_DOWN); d.Char('R'); });
//   s.Step([](ui::Dlg& d) { CHECK_EQ(d.SoftKeyText(ui::Left), L"Save"); d.SoftKey(ui::Left); });
//   s.Answer(IDYES);                        // the first message box gets Yes
//   INT_PTR r = ui::RunModal(s, [&] { return DialogBoxIndirectParamW(...); });
//   CHECK_EQ(ui::MessageBoxes().size(), 1u);
//   CHECK_EQ(ui::MessageBoxes()[0].text, L"Save changes?");
//
// Rules:
// - A step runs when the thread's queue is empty, so the input of the previous
//   step has been handled; read a step's effect in the next step.
// - A step acts on the active top-level window of the thread that is not a
//   message box (`Dlg::hwnd`): after a step opens a nested dialog, on that one.
// - Keys are posted to the focused control, so they pass the soft-key hook and
//   the dialog manager exactly as typed keys.
// - Message boxes are answered at once and recorded. The answer is the next
//   one queued with Script::Answer, else the first button; an answer the box
//   does not offer fails the test.
// - A dialog that does not end within the script's timeout (default 3 s) after
//   the last step, or a step that waits too long, fails the test; the harness
//   then closes every window the run opened so the next test starts clean.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace ui {

enum SoftKeySide { Left = 0, Right = 1 };

// One message box seen during a run.
struct MessageBoxRecord {
    std::wstring text;
    std::wstring caption;
    UINT buttons = 0;  // MB_OK, MB_YESNO or MB_YESNOCANCEL: the only boxes the program shows
    UINT icon = 0;     // MB_ICONEXCLAMATION, MB_ICONQUESTION, MB_ICONINFORMATION, MB_ICONERROR or 0
    int answer = 0;    // the button pressed (IDOK, IDYES, ...)
};

// The window a step works on, with helpers to type into it and read it.
// Control arguments are control IDs of this window (0 = the window itself).
class Dlg {
public:
    HWND hwnd = nullptr;

    // --- input (queued; see the rules above) ---
    void Key(UINT vk);                 // key down + key up to the focused control
    void Char(wchar_t ch);             // WM_CHAR to the focused control
    void Type(const wchar_t* text);    // WM_CHAR for every character
    void SoftKey(SoftKeySide side);    // F1 or F2
    void TapSoftKey(SoftKeySide side); // a mouse click on the key in the bar under the client area
    void Back();                       // Esc
    void Enter();                      // Return
    void Command(UINT id);             // WM_COMMAND id (lParam 0) posted to the window
    void Tap(int ctrlId, int x, int y);          // click at a point of a control (its client coordinates)
    void Tap(HWND target, int x, int y);
    void TapCenter(int ctrlId);                  // click the middle of a control
    void TapCell(int listId, int row, int col);  // click the middle of a list-view cell
    void SetFocusTo(int ctrlId);                 // SetFocus at once (not queued)

    // --- reading ---
    HWND Item(int ctrlId) const;       // the control (0: the window itself)
    int FocusId() const;               // its control ID (0 when none)
    std::wstring Text(int ctrlId = 0) const;
    bool Visible(int ctrlId) const;
    RECT ClientRect(int ctrlId = 0) const;

    int ListCount(int listId) const;                       // list view rows
    std::wstring ListText(int listId, int row, int col = 0) const;
    int ListSelectionMark(int listId) const;
    int ListFocused(int listId) const;                     // row with LVNI_FOCUSED, -1 when none

    HWND MenuBar() const;                                  // the window's soft-key bar, or NULL
    std::wstring SoftKeyText(SoftKeySide side) const;      // via TB_GETBUTTONTEXTW
    int SoftKeyCommand(SoftKeySide side) const;            // the button's command ID
    HMENU SoftKeyMenu(SoftKeySide side) const;             // its popup, or NULL
    bool MenuOpen() const;                                 // a popup menu is on screen
    // Texts of a menu's entries as shown ("&1 Save"; separators as L"-").
    static std::vector<std::wstring> MenuTexts(HMENU menu);
};

class Script {
public:
    using StepFn = std::function<void(Dlg&)>;

    Script& Step(StepFn fn);
    // A step that waits until a visible window of this class (and title, if
    // given) is in front; later steps act on it. Fails after the timeout.
    Script& WaitFor(const wchar_t* className, const wchar_t* title = nullptr);
    // A step that waits until the condition holds (checked at every idle tick).
    Script& WaitUntil(std::function<bool(Dlg&)> cond);
    // Queue the answer for the next message box (IDOK, IDCANCEL, IDYES, IDNO, ...).
    Script& Answer(int id);
    // For tests of the harness itself: problems of the run (timeouts, unused
    // or impossible answers) go to LastRunProblems() instead of failing.
    Script& ExpectProblems();

    // Used by the runner.
    struct Entry {
        StepFn run;
        std::function<bool(Dlg&)> until;  // set for waiting steps
        std::wstring what;                // description for failure messages
    };
    std::vector<Entry> steps;
    std::vector<int> answers;
    DWORD timeoutMs = 3000;
    bool expectProblems = false;
};

// Runs `open` (which shows a modal dialog and returns its result) while the
// script drives it; returns what `open` returned. Failures are reported
// against the caller's line.
INT_PTR RunModal(Script& script, const std::function<INT_PTR()>& open, const char* file = __builtin_FILE(),
                 int line = __builtin_LINE());

// Drives an already created modeless window (the main window): pumps the
// thread's messages until every step ran and the queue is idle, or the window
// is destroyed. Returns true when the window still exists.
bool RunWindow(Script& script, HWND hwnd, const char* file = __builtin_FILE(), int line = __builtin_LINE());

// Message boxes seen by the last RunModal / RunWindow, in order.
const std::vector<MessageBoxRecord>& MessageBoxes();

// Problems of the last run of a script with ExpectProblems().
const std::vector<std::string>& LastRunProblems();

}  // namespace ui
