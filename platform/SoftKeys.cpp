// The phone's keys on a desktop keyboard: F1 and F2 are the soft keys and Esc
// is Back. Modal dialogs run their own message loops and the program's loop
// filters nothing, so the keys are caught by a thread message hook, on their
// way out of the queue, and handed to the soft-key bar of the window they
// were typed into. Keys typed into a window without a bar pass unchanged.
#include <windows.h>

#include "platform/Platform.h"
#include "platform/PlatformInternal.h"

namespace {

struct SoftKeyHookState {
    HHOOK hook;
    DWORD thread;
    // Which bar took the press of F1, F2, Esc: its release goes there too, and
    // a release whose press went elsewhere (to an open menu) is dropped.
    HWND pressedOn[3];
    bool pressedInMenu[3];
} g_hook;

int PhoneKeyIndex(WPARAM vk) {
    switch (vk) {
    case VK_F1:     return 0;
    case VK_F2:     return 1;
    case VK_ESCAPE: return 2;
    default:        return -1;
    }
}

// The bar of the window the key was typed into, or of one of its parents.
HWND BarForKeyTarget(HWND target) {
    for (HWND w = target; w; w = GetAncestor(w, GA_PARENT)) {
        HWND bar = FindSoftKeyBar(w);
        if (bar) return IsWindowEnabled(w) ? bar : nullptr;
        if (!(GetWindowLongW(w, GWL_STYLE) & WS_CHILD)) break;
    }
    return nullptr;
}

// A popup is open when the soft-key menu says so or the thread is in menu
// mode: a context menu tracked by a window is no soft-key menu, and Back must
// close it rather than reach the window under it.
bool AnyMenuOpen() {
    if (SoftKeyMenuIsOpen()) return true;
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE));
}

// Returns true when the key was taken.
bool RouteKey(MSG* msg) {
    bool down = msg->message == WM_KEYDOWN || msg->message == WM_SYSKEYDOWN;
    bool up = msg->message == WM_KEYUP || msg->message == WM_SYSKEYUP;
    int key = PhoneKeyIndex(msg->wParam);
    if ((!down && !up) || key < 0 || !msg->hwnd) return false;

    if (up) {
        HWND bar = g_hook.pressedOn[key];
        bool inMenu = g_hook.pressedInMenu[key];
        g_hook.pressedOn[key] = nullptr;
        g_hook.pressedInMenu[key] = false;
        if (bar && IsWindow(bar)) PostMessageW(bar, kMsgBarKey, msg->wParam, 1);
        return bar || inMenu;
    }
    if (AnyMenuOpen()) {
        // An open menu keeps Back (one level up); a soft key closes it, as on
        // the phone.
        g_hook.pressedInMenu[key] = true;
        if (msg->wParam == VK_ESCAPE) return false;
        EndMenu();
        return true;
    }
    HWND bar = BarForKeyTarget(msg->hwnd);
    if (!bar) return false;
    bool repeat = (msg->lParam & (1 << 30)) != 0;
    if (!repeat) PostMessageW(bar, kMsgBarKey, msg->wParam, 0);
    g_hook.pressedOn[key] = bar;
    return true;
}

LRESULT CALLBACK GetMessageHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && wParam == PM_REMOVE) {
        MSG* msg = (MSG*)lParam;
        if (RouteKey(msg)) msg->message = WM_NULL;
    }
    return CallNextHookEx(g_hook.hook, code, wParam, lParam);
}

}  // namespace

void InstallSoftKeyHook() {
    DWORD thread = GetCurrentThreadId();
    if (g_hook.hook && g_hook.thread == thread) return;
    if (g_hook.hook) UnhookWindowsHookEx(g_hook.hook);
    g_hook.hook = SetWindowsHookExW(WH_GETMESSAGE, GetMessageHook, nullptr, thread);
    g_hook.thread = thread;
}
