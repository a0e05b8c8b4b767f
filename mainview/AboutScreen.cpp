#include "mainview/AboutScreen.h"

#include <string>

#include "LangIds.h"
#include "ZvVersion.h"
#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"

namespace {

const wchar_t kProgramVersion[] = L"" ZV_VERSION_TEXT;
const wchar_t kBuildDate[] = L"" __DATE__;

struct AboutScreenState {
    FontHandle nameFont;
    FontHandle labelFont;
    FontHandle textFont;
    IconHandle icon;
};
AboutScreenState g_about;

HFONT CreateTahoma(int height, LONG weight) {
    LOGFONTW lf = {};
    lf.lfHeight = -ScaleY(height);
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(lf.lfFaceName, L"Tahoma", LF_FACESIZE);
    return CreateFontIndirectW(&lf);
}

// Layout in phone pixels of a 240-pixel-wide screen: x, y, height; the
// width runs to the right margin.
struct TextPlace {
    int id;
    int x, y, h;
};
const TextPlace kPlaces[] = {
    {kAboutName, 48, 8, 22},          {kAboutVersion, 48, 30, 16},        {kAboutBuilt, 48, 46, 16},
    {kAboutDescription, 8, 72, 46},   {kAboutListsLabel, 8, 126, 16},     {kAboutListsFolder, 8, 142, 32},
    {kAboutTemplatesLabel, 8, 182, 16}, {kAboutTemplatesFolder, 8, 198, 32},
};

HWND AddText(HWND hwnd, const TextPlace& place, const std::wstring& text, HFONT font) {
    RECT client;
    GetClientRect(hwnd, &client);
    int x = ScaleX(place.x);
    HWND label = CreateWindowExW(0, L"static", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL,
                                 x, ScaleY(place.y), client.right - x - ScaleX(8), ScaleY(place.h), hwnd,
                                 (HMENU)(INT_PTR)place.id, hInstance, nullptr);
    SendMessageW(label, WM_SETFONT, (WPARAM)font, FALSE);
    return label;
}

// A folder as the registry gives it, or a word saying there is none.
std::wstring FolderText(const wchar_t* folder) { return folder[0] ? folder : ResText(IDS_ABOUT_NOT_SET); }

std::wstring TextFor(int id) {
    wchar_t folder[260] = {};
    switch (id) {
    case kAboutName: return ResText(IDS_ABOUT_NAME);
    case kAboutVersion: return ResFormat(IDS_ABOUT_VERSION, {kProgramVersion});
    case kAboutBuilt: return ResFormat(IDS_ABOUT_BUILT, {kBuildDate});
    case kAboutDescription: return ResText(IDS_ABOUT_PRODUCT);
    case kAboutListsLabel: return ResText(IDS_ABOUT_LISTS_FOLDER);
    case kAboutTemplatesLabel: return ResText(IDS_ABOUT_TEMPLATES_FOLDER);
    case kAboutListsFolder:
        g_registryConfig.GetListsPath(1, folder);
        return FolderText(folder);
    case kAboutTemplatesFolder:
        g_registryConfig.GetTemplatePath(folder);
        return FolderText(folder);
    }
    return L"";
}

HFONT FontFor(int id) {
    if (id == kAboutName) return g_about.nameFont;
    if (id == kAboutListsLabel || id == kAboutTemplatesLabel) return g_about.labelFont;
    return g_about.textFont;
}

BOOL OnInitDialog(HWND hwnd) {
    g_about = AboutScreenState();
    SetWindowTextW(hwnd, ResText(IDS_ABOUT_TITLE).c_str());
    g_about.nameFont.Reset(CreateTahoma(16, FW_BOLD));
    g_about.labelFont.Reset(CreateTahoma(12, FW_BOLD));
    g_about.textFont.Reset(CreateTahoma(12, FW_NORMAL));
    g_about.icon.Reset((HICON)LoadImageW(hInstance, MAKEINTRESOURCEW(IDI_ZORVEL), IMAGE_ICON, ScaleX(32), ScaleY(32),
                                         LR_DEFAULTCOLOR));
    HWND icon = CreateWindowExW(0, L"static", L"", WS_CHILD | WS_VISIBLE | SS_ICON | SS_REALSIZECONTROL, ScaleX(8),
                                ScaleY(8), ScaleX(32), ScaleY(32), hwnd, (HMENU)(INT_PTR)kAboutIcon, hInstance, nullptr);
    SendMessageW(icon, STM_SETICON, (WPARAM)g_about.icon.Get(), 0);
    for (const TextPlace& place : kPlaces) AddText(hwnd, place, TextFor(place.id), FontFor(place.id));
    return TRUE;
}

BOOL OnCommand(HWND hwnd, int id) {
    if (id != IDOK && id != IDCANCEL) return FALSE;  // Done, the action key, Back
    EndDialog(hwnd, id);
    return TRUE;
}

INT_PTR CALLBACK AboutScreenProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(hwnd);
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam));
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
        SetBkColor((HDC)wParam, GetSysColor(COLOR_WINDOW));
        return (INT_PTR)GetSysColorBrush(COLOR_WINDOW);
    case WM_NCDESTROY: g_about = AboutScreenState(); return FALSE;
    }
    return FALSE;
}

}  // namespace

void RunAboutScreen(HWND owner) {
    PhoneDialogSetup setup;
    setup.menuModule = hLangModule;
    setup.menuId = IDM_ABOUT_MENUBAR;
    setup.overrideBack = false;  // Back closes the screen
    RunPhoneDialog(owner, setup, AboutScreenProc, 0);
}
