// The General page: the list font's size and face on the first tab, the
// icons folder and the templates folder on the second. The two tabs overlay
// each other; the page menu's entries switch between them.
#include <windows.h>
#include <commctrl.h>

#include "LangIds.h"
#include "dialogs/FileSelectDialog.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"
#include "settings/AppSettings.h"
#include "settings/SettingsWindow.h"

namespace {

const int kSmallestFontSize = 8;
const int kLargestFontSize = 16;
const int kMaxFolderChars = 255;

int CALLBACK AddFontFace(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM list) {
    // A face comes once per character set on some systems: list it once.
    if (SendMessageW((HWND)list, LB_FINDSTRINGEXACT, (WPARAM)-1, (LPARAM)font->lfFaceName) == LB_ERR)
        SendMessageW((HWND)list, LB_ADDSTRING, 0, (LPARAM)font->lfFaceName);
    return 1;
}

// The spinner's arrows step through the list box's rows.
void SetSpinRange(HWND spin, HWND list) {
    int count = (int)SendMessageW(list, LB_GETCOUNT, 0, 0);
    SendMessageW(spin, UDM_SETRANGE32, 0, count > 0 ? count - 1 : 0);
    int current = (int)SendMessageW(list, LB_GETCURSEL, 0, 0);
    SendMessageW(spin, UDM_SETPOS32, 0, current < 0 ? 0 : current);
}

CeString EditText(HWND edit) {
    wchar_t text[kMaxFolderChars + 1] = {};
    GetWindowTextW(edit, text, kMaxFolderChars + 1);
    return CeString(text);
}

void BrowseForFolder(HWND page, HWND edit, HINSTANCE stringModule) {
    FileSelectRequest request;
    request.mode = FileSelectFolder;
    request.title = L"Select Folder";
    request.folder = EditText(edit);  // start where the folder is now
    request.module = stringModule;
    request.menuBarId = IDM_FILE_SELECT_MENUBAR;
    request.imageStripId = IDB_PROGRAM_IMAGE_STRIP;
    request.pathHintId = IDS_FILE_SELECT_UP;
    if (RunFileSelectDialog(page, request)) SetWindowTextW(edit, request.path);
}

}  // namespace

UINT CGeneralSettingsWindow::GetTabTitle(int index) { return index == 0 ? IDS_TAB_FONT : IDS_TAB_FOLDERS; }

void CGeneralSettingsWindow::CreateControls(HWND hwnd) {
    int top = ScaleX(8);
    top += AddSpinnerRow(hwnd, kGeneralSizeLabel, top, IDS_FONT_SIZE_LABEL);
    AddSpinnerRow(hwnd, kGeneralFaceLabel, top, IDS_FONT_FACE_LABEL);

    HWND sizes = controls[kGeneralSizeList];
    for (int size = kSmallestFontSize; size <= kLargestFontSize; ++size) {
        wchar_t text[8];
        wsprintfW(text, L"%d", size);
        int row = (int)SendMessageW(sizes, LB_ADDSTRING, 0, (LPARAM)text);
        SendMessageW(sizes, LB_SETITEMDATA, row, size);
    }
    SendMessageW(sizes, LB_SETCURSEL, (int)g_appSettings.FontSize.value - kSmallestFontSize, 0);
    SetSpinRange(controls[kGeneralSizeSpin], sizes);

    HWND faces = controls[kGeneralFaceList];
    HDC dc = GetDC(hwnd);
    EnumFontsW(dc, nullptr, AddFontFace, (LPARAM)faces);
    ReleaseDC(hwnd, dc);
    SendMessageW(faces, LB_SELECTSTRING, (WPARAM)-1, (LPARAM)g_appSettings.FontFace.value.c_str());
    SetSpinRange(controls[kGeneralFaceSpin], faces);

    // The second tab lies over the first.
    top = ScaleX(8);
    top += AddFolderRow(hwnd, kGeneralIconsLabel, top, IDS_ICONS_FOLDER_LABEL) + ScaleY(5);
    AddFolderRow(hwnd, kGeneralTemplatesLabel, top, IDS_TEMPLATES_FOLDER_LABEL);
    SetWindowTextW(controls[kGeneralIconsEdit], g_appSettings.IconsFolder.value);
    SetWindowTextW(controls[kGeneralTemplatesEdit], g_appSettings.TemplatePath.value);
}

void CGeneralSettingsWindow::ShowTab(HWND, int showCommand) {
    if (CurrentTab() == 0) ShowControls(kGeneralSizeLabel, kGeneralFaceList, showCommand);
    else ShowControls(kGeneralIconsLabel, kGeneralTemplatesBrowse, showCommand);
}

void CGeneralSettingsWindow::Apply() {
    // An empty selection keeps the value the page opened with.
    HWND sizes = controls[kGeneralSizeList];
    int row = (int)SendMessageW(sizes, LB_GETCURSEL, 0, 0);
    g_appSettings.FontSize.Set(row >= 0 ? (DWORD)SendMessageW(sizes, LB_GETITEMDATA, row, 0)
                                        : g_appSettings.FontSize.value);
    HWND faces = controls[kGeneralFaceList];
    row = (int)SendMessageW(faces, LB_GETCURSEL, 0, 0);
    wchar_t face[LF_FACESIZE] = {};
    if (row >= 0 && SendMessageW(faces, LB_GETTEXTLEN, row, 0) < LF_FACESIZE)
        SendMessageW(faces, LB_GETTEXT, row, (LPARAM)face);
    g_appSettings.FontFace.Set(face[0] ? face : g_appSettings.FontFace.value.c_str());
    g_appSettings.IconsFolder.Set(EditText(controls[kGeneralIconsEdit]));
    g_appSettings.TemplatePath.Set(EditText(controls[kGeneralTemplatesEdit]));
}

BOOL CGeneralSettingsWindow::OnCommand(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    const bool first = LOWORD(wParam) == IDM_PAGE_TAB_BASE;
    if (first || LOWORD(wParam) == IDM_PAGE_TAB_BASE + 1) {
        ShowControls(kGeneralSizeLabel, kGeneralFaceList, first ? SW_SHOW : SW_HIDE);
        ShowControls(kGeneralIconsLabel, kGeneralTemplatesBrowse, first ? SW_HIDE : SW_SHOW);
        // The focus follows to the tab on screen.
        SetFocus(controls[first ? kGeneralSizeList : kGeneralIconsEdit]);
        return TRUE;
    }
    if (HIWORD(wParam) != BN_CLICKED) return FALSE;
    switch (IndexOf((HWND)lParam)) {
    case kGeneralIconsClear: SetWindowTextW(controls[kGeneralIconsEdit], L""); return TRUE;
    case kGeneralTemplatesClear: SetWindowTextW(controls[kGeneralTemplatesEdit], L""); return TRUE;
    case kGeneralIconsBrowse: BrowseForFolder(hwnd, controls[kGeneralIconsEdit], stringModule); return TRUE;
    case kGeneralTemplatesBrowse: BrowseForFolder(hwnd, controls[kGeneralTemplatesEdit], stringModule); return TRUE;
    }
    return FALSE;
}
