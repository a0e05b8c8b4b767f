#include "settings/SettingsDialog.h"

#include <commctrl.h>

#include <memory>

#include "LangIds.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "mainview/AboutScreen.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "settings/AppSettings.h"
#include "settings/SettingsWindow.h"
#include "base/AppGlobals.h"
#include "dialogs/MessageBoxes.h"
#include "templates/Templates.h"

namespace {

struct SettingsDialogState {
    HINSTANCE resourceModule = nullptr;
    HINSTANCE stringModule = nullptr;
    HINSTANCE pageModule = nullptr;
    HWND pageList = nullptr;
    FontHandle listFont;
    // The shared dialog fonts: every page's controls are set in these.
    FontHandle normalFont;
    FontHandle boldFont;
    std::unique_ptr<CSettingsWindow> openPage;
};
SettingsDialogState g_settingsDialog;

enum SettingsPage { PageGeneral = 0, PageColors = 1, PageTemplates = 2 };
const UINT kPageNames[] = {IDS_PAGE_GENERAL, IDS_PAGE_COLORS, IDS_PAGE_TEMPLATES};

// The settings dialog has no template resource: a popup with a caption and
// no controls, sized to the screen by SHInitDialog.
struct alignas(4) EmptyDialogTemplate {
    DLGTEMPLATE dialog;
    WORD menu, windowClass, title;
};
const EmptyDialogTemplate kSettingsTemplate = {{WS_POPUP | WS_VISIBLE | WS_CAPTION, 0, 0, 0, 0, 0, 0}, 0, 0, 0};

HFONT CreateDialogFont(const wchar_t* face, int height, LONG weight) {
    LOGFONTW lf = {};
    lf.lfHeight = height;
    lf.lfWeight = weight;
    lf.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(lf.lfFaceName, face, LF_FACESIZE);
    return CreateFontIndirectW(&lf);
}

void ResetTitle(HWND hwnd) { SetWindowTextW(hwnd, ResText(IDS_SETTINGS_TITLE).c_str()); }

// Row `row` (from 0) shows its number (from 1) and the page's name.
void AddPageRow(HWND list, int row, UINT nameId) {
    wchar_t text[300];
    wsprintfW(text, L"%d  ", row + 1);
    lstrcatW(text, ResText(nameId).substr(0, 250).c_str());
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = text;
    SendMessageW(list, LVM_INSERTITEMW, 0, (LPARAM)&item);
}

void CreatePageList(HWND hwnd) {
    RECT client;
    GetClientRect(hwnd, &client);
    HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"",
                                WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_AUTOARRANGE |
                                    LVS_NOCOLUMNHEADER | LVS_NOSORTHEADER,
                                0, 0, client.right, client.bottom, hwnd, (HMENU)(INT_PTR)kSettingsPageList,
                                g_settingsDialog.resourceModule, nullptr);
    g_settingsDialog.pageList = list;
    // The device's LVS_EX_NOHSCROLL has no desktop counterpart: the one
    // column is as wide as the client area, so no horizontal bar shows.
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
    g_settingsDialog.listFont.Reset(
        CreateDialogFont(g_appSettings.FontFace.value.c_str(), ScaleX(16), FW_BOLD));
    SendMessageW(list, WM_SETFONT, (WPARAM)g_settingsDialog.listFont.Get(), FALSE);
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = const_cast<wchar_t*>(L"List Column");
    column.cx = client.right;
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, (LPARAM)&column);
    int row = 0;
    for (UINT nameId : kPageNames) AddPageRow(list, row++, nameId);
    // The first page is marked, so the action key opens something at once.
    LVITEMW mark = {};
    mark.stateMask = mark.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, 0, (LPARAM)&mark);
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, 0);
    SetFocus(list);
}

BOOL OnInitDialog(HWND hwnd) {
    InitScreenScale(false);
    ResetTitle(hwnd);
    // Before the list: its font is the stored face, not one left in memory.
    g_appSettings.LoadSettings();
    g_settingsDialog.normalFont.Reset(CreateDialogFont(L"Tahoma", ScaleY(12), FW_THIN));
    g_settingsDialog.boldFont.Reset(CreateDialogFont(L"Tahoma", ScaleY(12), FW_BOLD));
    CreatePageList(hwnd);
    return FALSE;  // the focus is on the list
}

template <class Page>
void RunPage(HWND hwnd, const wchar_t* name, UINT titleId) {
    SettingsDialogState& s = g_settingsDialog;
    s.openPage.reset(new Page());
    s.openPage->Run(hwnd, name, titleId, s.resourceModule, s.stringModule, s.normalFont, s.boldFont, 0);
}

void OpenPage(HWND hwnd, int index) {
    switch (index) {
    case PageGeneral: RunPage<CGeneralSettingsWindow>(hwnd, L"GeneralSettingsWin", IDS_PAGE_GENERAL); break;
    case PageColors: RunPage<CColorsSettingsWindow>(hwnd, L"ColorsSettingsWin", IDS_PAGE_COLORS); break;
    case PageTemplates: {
        TemplatesManagerRequest request = {hLangModule, 1};
        RunTemplatesManager(hwnd, request);
        break;
    }
    default: return;
    }
    SendMessageW(hwnd, kMsgPageClosed, 0, 0);
}

int PageOfKey(WORD key) {
    switch (key) {
    case '1': case 'W': return PageGeneral;
    case '2': case 'E': return PageColors;  // the same keys on a QWERTY keypad
    case '3': case 'R': return PageTemplates;
    }
    return -1;
}

BOOL OnNotify(HWND hwnd, const NMHDR* header) {
    if (header->idFrom != (UINT_PTR)kSettingsPageList) return FALSE;
    switch (header->code) {
    case LVN_KEYDOWN: OpenPage(hwnd, PageOfKey(((const NMLVKEYDOWN*)header)->wVKey)); return TRUE;
    case LVN_ITEMACTIVATE: OpenPage(hwnd, ((const NMITEMACTIVATE*)header)->iItem); return TRUE;
    }
    return FALSE;
}

void OpenMarkedPage(HWND hwnd) {
    int row = (int)SendMessageW(g_settingsDialog.pageList, LVM_GETSELECTIONMARK, 0, 0);
    if (row < 0) return;
    wchar_t text[512] = {};
    LVITEMW item = {};
    item.pszText = text;
    item.cchTextMax = 512;
    SendMessageW(g_settingsDialog.pageList, LVM_GETITEMTEXTW, row, (LPARAM)&item);
    SetWindowTextW(hwnd, text);
    OpenPage(hwnd, row);
}

void AskToCancel(HWND hwnd) {
    if (ResMessageBox(hwnd, IDS_SETTINGS_CANCEL_TEXT, IDS_SETTINGS_CANCEL_CAPTION, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    // The pages put their values into memory already: read the stored ones
    // back, so nothing the user threw away shows anywhere.
    g_appSettings.LoadSettings();
    EndDialog(hwnd, 0);
}

BOOL OnCommand(HWND hwnd, int id) {
    switch (id) {
    case IDC_OK:
        g_appSettings.SaveSettings();
        EndDialog(hwnd, 1);
        return TRUE;
    case IDCANCEL: AskToCancel(hwnd); return TRUE;
    case IDOK: OpenMarkedPage(hwnd); return TRUE;
    case IDM_SETTINGS_ABOUT: RunAboutScreen(hwnd); return TRUE;
    }
    return FALSE;
}

BOOL OnPageClosed(HWND hwnd) {
    g_settingsDialog.openPage.reset();
    ResetTitle(hwnd);
    return TRUE;
}

BOOL OnDestroy() {
    if (g_settingsDialog.pageList) DestroyWindow(g_settingsDialog.pageList);
    g_settingsDialog.pageList = nullptr;
    g_settingsDialog.listFont.Reset();
    return TRUE;
}

INT_PTR CALLBACK SettingsDialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(hwnd);
    case WM_NOTIFY: return OnNotify(hwnd, (const NMHDR*)lParam);
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam));
    case kMsgPageClosed: return OnPageClosed(hwnd);
    case WM_DESTROY: return OnDestroy();
    }
    return FALSE;
}

}  // namespace

bool RunSettingsDialog(HINSTANCE resourceModule, HINSTANCE stringModule, HINSTANCE pageModule) {
    g_settingsDialog = SettingsDialogState();
    g_settingsDialog.resourceModule = resourceModule;
    g_settingsDialog.stringModule = stringModule;
    g_settingsDialog.pageModule = pageModule;
    PhoneDialogSetup setup;
    setup.menuModule = stringModule;
    setup.menuId = IDM_SETTINGS_MENUBAR;
    setup.overrideBack = false;  // Back asks whether to throw the changes away
    setup.dialogTemplate = &kSettingsTemplate.dialog;
    INT_PTR ended = RunPhoneDialog(nullptr, setup, SettingsDialogProc, 0);
    g_settingsDialog = SettingsDialogState();
    return ended > 0;
}
