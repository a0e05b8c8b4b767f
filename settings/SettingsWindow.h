// The settings pages: one framework class, CSettingsWindow, that runs a page
// on the full-screen template, builds its soft keys and routes every message
// of the page to a virtual operation; the General and Colors pages are its
// two specialisations and keep no state of their own beyond the controls.
//
//     CGeneralSettingsWindow page;
//     page.Run(owner, L"GeneralSettingsWin", IDS_PAGE_GENERAL, hInstance, hLangModule,
//              normalFont, boldFont, 0);
//     // on return the page's values are in g_appSettings (not yet stored)
//
// Control c of a page has the identifier c + 1: the Colors page's swatches
// are told apart by it when they draw.
#pragma once
#include <windows.h>

#include <vector>

class CSettingsWindow {
public:
    CSettingsWindow() = default;
    CSettingsWindow(const CSettingsWindow&) = delete;
    CSettingsWindow& operator=(const CSettingsWindow&) = delete;

    // The operations in the order every page provides or inherits them.
    virtual int GetTabCount() = 0;
    virtual UINT GetTabTitle(int index) = 0;  // a string of the string module
    virtual int GetControlCount() = 0;
    virtual void CreateControls(HWND hwnd) = 0;
    virtual void ShowTab(HWND hwnd, int showCommand) = 0;  // the current tab's controls
    virtual void Apply() = 0;                              // the controls' values into g_appSettings
    virtual void OnPaint(HWND hwnd);
    virtual BOOL OnLButtonDown(HWND hwnd, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnDrawItem(HWND hwnd, const DRAWITEMSTRUCT* item);
    virtual BOOL OnMeasureItem(HWND hwnd, MEASUREITEMSTRUCT* item);
    virtual BOOL OnCommand(HWND hwnd, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnMove(HWND hwnd);
    virtual BOOL OnNotify(HWND hwnd, NMHDR* header);
    virtual ~CSettingsWindow() = default;

    // Runs the page modally on the full-screen template of `resourceModule`,
    // owned by `owner`, titled with string `titleId`. `name` is the page's
    // name ("GeneralSettingsWin", "ColorsSettingsWin"); no window class is
    // registered under it. Returns 1 when the page was left by Done or Back.
    INT_PTR Run(HWND owner, const wchar_t* name, UINT titleId, HINSTANCE resourceModule, HINSTANCE stringModule,
                HFONT normalFont, HFONT boldFont, UINT menuSelector);

    // The tabs are entries of the soft-key menu, not a tab control: the
    // current tab as a tab control would report it is always the first.
    int CurrentTab() const { return 0; }

    // Used by the page procedure (SettingsWindow.cpp).
    void Create(HWND hwnd);
    void Destroy();
    static INT_PTR CALLBACK PageProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

protected:
    // The control rows, placed from `top` in the page's client area; each
    // returns the height the next row starts below.
    int AddSpinnerRow(HWND hwnd, int firstIndex, int top, UINT labelId);  // label, up-down, list box
    int AddFolderRow(HWND hwnd, int firstIndex, int top, UINT labelId);   // label, edit, Clear, Browse
    int AddColorRow(HWND hwnd, int labelIndex, int swatchIndex, int top, UINT labelId);
    void ShowControls(int first, int last, int showCommand);
    int IndexOf(HWND control) const;  // -1 for none of this page's
    const wchar_t* Text(UINT id);     // string `id` of the string module (one buffer)

    std::vector<HWND> controls;  // by control index, as many as GetControlCount()
    HFONT normalFont = nullptr;
    HFONT boldFont = nullptr;
    HINSTANCE resourceModule = nullptr;
    HINSTANCE stringModule = nullptr;
    UINT menuSelector = 0;
    UINT titleId = 0;

private:
    HWND CreateControl(HWND hwnd, int index, const wchar_t* cls, const wchar_t* text, DWORD style, int x, int y,
                       int w, int h);
    wchar_t textBuffer[256] = {};
};

// Font size and face (first tab), icons and templates folders (second tab).
class CGeneralSettingsWindow : public CSettingsWindow {
public:
    int GetTabCount() override { return 2; }
    UINT GetTabTitle(int index) override;
    int GetControlCount() override { return 14; }
    void CreateControls(HWND hwnd) override;
    void ShowTab(HWND hwnd, int showCommand) override;
    void Apply() override;
    BOOL OnCommand(HWND hwnd, WPARAM wParam, LPARAM lParam) override;
};

// Four colour swatches; a chosen colour is put into g_appSettings at once.
class CColorsSettingsWindow : public CSettingsWindow {
public:
    int GetTabCount() override { return 1; }
    UINT GetTabTitle(int index) override;
    int GetControlCount() override { return 8; }
    void CreateControls(HWND hwnd) override;
    void ShowTab(HWND hwnd, int showCommand) override;
    void Apply() override {}
    BOOL OnDrawItem(HWND hwnd, const DRAWITEMSTRUCT* item) override;
    BOOL OnCommand(HWND hwnd, WPARAM wParam, LPARAM lParam) override;
};

// Control indices of the General page.
enum GeneralPageControl {
    kGeneralSizeLabel = 0, kGeneralSizeSpin, kGeneralSizeList,
    kGeneralFaceLabel, kGeneralFaceSpin, kGeneralFaceList,
    kGeneralIconsLabel, kGeneralIconsEdit, kGeneralIconsClear, kGeneralIconsBrowse,
    kGeneralTemplatesLabel, kGeneralTemplatesEdit, kGeneralTemplatesClear, kGeneralTemplatesBrowse,
};

// Swatch indices of the Colors page, one per colour setting; each label
// sits at another index (see ColorsPage.cpp).
enum ColorsPageSwatch {
    kSwatchMainViewCategory = 1,
    kSwatchMainViewList = 3,
    kSwatchListViewBack = 5,
    kSwatchListViewText = 7,
};
