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
} g_hook;

bool IsPhoneKey(WPARAM vk) { return vk == VK_F1 || vk == VK_F2 || vk == VK_ESCAPE; }

// The bar of the window the key was typed into, or of one of its parents.
HWND BarForKeyTarget(HWND target) {
    for (HWND w = target; w; w = GetAncestor(w, GA_PARENT)) {
        HWND bar = FindSoftKeyBar(w);
        if (bar) return IsWindowEnabled(w) ? bar : nullptr;
        if (!(GetWindowLongW(w, GWL_STYLE) & WS_CHILD)) break;
    }
    return nullptr;
}

// Returns true when the key was taken.
bool RouteKey(MSG* msg) {
    bool down = msg->message == WM_KEYDOWN || msg->message == WM_SYSKEYDOWN;
    bool up = msg->message == WM_KEYUP || msg->message == WM_SYSKEYUP;
    if ((!down && !up) || !IsPhoneKey(msg->wParam) || !msg->hwnd) return false;

    if (SoftKeyMenuIsOpen()) {
        // An open soft-key menu keeps Back (one level up) and arrows; a soft
        // key closes it, as on the phone.
        if (msg->wParam == VK_ESCAPE) return false;
        if (down) EndMenu();
        return true;
    }
    HWND bar = BarForKeyTarget(msg->hwnd);
    if (!bar) return false;
    bool repeat = down && (msg->lParam & (1 << 30)) != 0;
    if (!repeat) PostMessageW(bar, kMsgBarKey, msg->wParam, up ? 1 : 0);
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
