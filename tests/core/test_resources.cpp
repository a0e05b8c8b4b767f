// The resource modules as the program finds them: every numbered text, the
// shape of every soft-key menu and the commands in it, the German module
// beside the English one, the TGA images and bitmaps of both image modules,
// and the program's own resources.
#include "tests/framework/ZvTest.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/AppGlobals.h"
#include "images/PlanarImage.h"
#include "resources/ImageIds.h"
#include "resources/LangIds.h"
#include "resources/program/ProgramIds.h"
#include "tests/core/test_doc_util.h"

using doctest::ByteVec;

namespace {

// Every string ID of LangIds.h with its name, read from the header itself, so
// that an ID an engineer adds is checked before any table here learns of it.
std::vector<std::pair<std::string, UINT>> HeaderStringIds() {
    std::vector<std::pair<std::string, UINT>> ids;
    FILE* f = std::fopen("Z:" ZV_SOURCE_DIR "/resources/LangIds.h", "r");
    if (!f) return ids;
    char line[512];
    while (std::fgets(line, sizeof line, f)) {
        char name[128];
        unsigned id;
        if (std::sscanf(line, "#define %127s %u", name, &id) == 2 && std::strncmp(name, "IDS_", 4) == 0)
            ids.push_back({name, id});
    }
    std::fclose(f);
    return ids;
}

// Texts handed to a printf-style formatter, with the conversions the code
// passes arguments for (one letter per conversion, in order).
const std::map<UINT, std::string> kFormatTexts = {
    {IDS_LIST_EXISTS_TEXT, "s"},     {IDS_ABOUT_VERSION, "s"}, {IDS_ABOUT_BUILT, "s"}, {IDS_LIST_PARTLY_READ, "s"},
    {IDS_TEMPLATE_PARTLY_READ, "s"}, {IDS_COUNT_OF_TOTAL, "ss"},
};

std::wstring Text(HINSTANCE module, UINT id) {
    wchar_t buffer[1024];
    int n = LoadStringW(module, id, buffer, 1024);
    return std::wstring(buffer, n > 0 ? n : 0);
}

// The conversion letters of a printf format ("%%" is not one).
std::string Conversions(const std::wstring& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'%') continue;
        size_t j = i + 1;
        while (j < text.size() && std::wcschr(L"-+ #0123456789.lhL", text[j])) ++j;
        if (j == text.size() || text[j] != L'%') out += j < text.size() ? (char)text[j] : '?';
        i = j;
    }
    return out;
}

std::vector<UINT> SelectionIds() {
    std::vector<UINT> ids = {IDS_SELECTION_EMPTY, IDS_SELECTION_12, IDS_SELECTION_13};
    for (UINT id = IDS_SELECTION_BASE; id <= IDS_SELECTION_LAST_LOW; ++id) ids.push_back(id);
    return ids;
}

std::wstring BuildFolder() {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    while (n > 0 && path[n - 1] != L'\\') --n;
    return std::wstring(path, n);
}

// A module of the build, by its path from the program's folder, as data.
HINSTANCE BuildModule(const wchar_t* relative) {
    return LoadLibraryExW((BuildFolder() + relative).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

const HINSTANCE kGermanModule = BuildModule(L"LangGer.dll");
const HINSTANCE kHighDpiModule = BuildModule(L"ZVHighDpiRes.dll");
// The program's resources: linked into the UI test program and Zorvel.exe;
// the console tests read the build's data-only copy of them.
const HINSTANCE kProgramModule = BuildModule(L"..\\resources\\ZvProgramRes.dll");

BOOL CALLBACK AddName(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR names) {
    ((std::set<UINT>*)names)->insert(IS_INTRESOURCE(name) ? (UINT)(ULONG_PTR)name : 0);
    return TRUE;
}

std::set<UINT> ResourceNames(HINSTANCE module, LPCWSTR type) {
    std::set<UINT> names;
    EnumResourceNamesW(module, type, AddName, (LONG_PTR)&names);
    return names;
}

// Every text of the module's string blocks, by ID (16 IDs to a block).
std::map<UINT, std::wstring> AllStrings(HINSTANCE module) {
    std::map<UINT, std::wstring> texts;
    for (UINT block : ResourceNames(module, RT_STRING))
        for (UINT id = (block - 1) * 16; id < block * 16; ++id)
            if (!Text(module, id).empty()) texts[id] = Text(module, id);
    return texts;
}

// A menu without its words: per entry its ID, state and kind, popups nested.
std::string MenuShape(HMENU menu) {
    std::string shape;
    for (int i = 0; menu && i < GetMenuItemCount(menu); ++i) {
        wchar_t label[128] = L"";
        MENUITEMINFOW mii = {};
        mii.cbSize = sizeof mii;
        mii.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STATE | MIIM_SUBMENU | MIIM_STRING;
        mii.dwTypeData = label;
        mii.cch = 128;
        GetMenuItemInfoW(menu, i, TRUE, &mii);
        if (mii.fType & MFT_SEPARATOR) {
            shape += "-";
        } else {
            // A MENU popup has no ID of its own (it reads back as its handle);
            // a MENUEX popup has one.
            if (!mii.hSubMenu || mii.wID != (UINT)(UINT_PTR)mii.hSubMenu) shape += std::to_string(mii.wID);
            if (!label[0]) shape += "(no label)";
            if (mii.fState & MFS_GRAYED) shape += "g";
        }
        if (mii.hSubMenu) shape += "{" + MenuShape(mii.hSubMenu) + "}";
        shape += " ";
    }
    return shape;
}

// Whether a command is in a menu or any of its popups.
bool Contains(HMENU menu, UINT id) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        HMENU sub = GetSubMenu(menu, i);
        if (sub ? Contains(sub, id) : GetMenuItemID(menu, i) == id) return true;
    }
    return false;
}

// The command of an entry, or the ID that MENUEX gives a popup entry.
UINT KeyId(HMENU menu, int pos) {
    MENUITEMINFOW mii = {};
    mii.cbSize = sizeof mii;
    mii.fMask = MIIM_ID;
    return GetMenuItemInfoW(menu, pos, TRUE, &mii) ? mii.wID : 0;
}

// A null menu lacks every command.
void CheckCommands(HMENU menu, const std::vector<UINT>& ids, const char* file, int line) {
    for (UINT id : ids)
        if (!Contains(menu, id)) zvtest::Fail(file, line, "menu lacks command " + std::to_string(id));
}

ByteVec TgaResource(HINSTANCE module, UINT id) {
    HRSRC res = FindResourceW(module, MAKEINTRESOURCEW(id), ZV_RT_TARGA);
    const unsigned char* p = res ? (const unsigned char*)LockResource(LoadResource(module, res)) : nullptr;
    return p ? ByteVec(p, p + SizeofResource(module, res)) : ByteVec();
}

// A TGA the program's decoder reads upright: uncompressed true colour, 32 bits
// with alpha, rows top first (bit 4 of the descriptor; bit 5 is not used).
void CheckTga(const ByteVec& tga, int size, const char* file, int line) {
    if (tga.size() < 18) return zvtest::Fail(file, line, "no TGA");
    doctest::Bytes header = doctest::Bytes().tgaHeader(2, size, size, 32, 0x10 | (tga[17] & 0x0F), tga[0]);
    zvtest::CheckBytes(ByteVec(tga.begin(), tga.begin() + 18), header.v, file, line);
    CHECK_EQ_AT(tga.size(), size_t(18 + tga[0] + size * size * 4), file, line);
}

// A bitmap's size and, unless CLR_INVALID is asked for, its top-left pixel.
void CheckBitmap(HINSTANCE module, UINT id, int width, int height, COLORREF corner, const char* file, int line) {
    HBITMAP bitmap = LoadBitmapW(module, MAKEINTRESOURCEW(id));
    BITMAP info = {};
    GetObjectW(bitmap, sizeof info, &info);
    CHECK_EQ_AT(info.bmWidth, (LONG)width, file, line);
    CHECK_EQ_AT(info.bmHeight, (LONG)height, file, line);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, bitmap);
    if (corner != CLR_INVALID) CHECK_EQ_AT(GetPixel(dc, 0, 0), corner, file, line);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

}  // namespace

// Every ID of the header has a text that callers' buffers of 255 characters
// hold. Texts handed to a formatter have their conversions; every other text
// is shown as it stands or has text appended with "%s \"%s\"", so a stray
// "%" would be read as a conversion (selection texts are never formatted).
TEST_CASE(Res_EveryHeaderStringLoads) {
    std::vector<std::pair<std::string, UINT>> ids = HeaderStringIds();
    std::vector<UINT> selection = SelectionIds();
    CHECK(ids.size() > 100);  // the header was read, not just opened
    for (const auto& [name, id] : ids) {
        std::wstring text = Text(hLangModule, id);
        // The empty selection is stored as choice 11 exactly because its text is empty.
        if (text.empty() != (id == IDS_SELECTION_EMPTY)) zvtest::Fail(ZV_HERE, name + ": empty or not");
        if (text.size() >= 255) zvtest::Fail(ZV_HERE, name + " is too long");
        auto format = kFormatTexts.find(id);
        bool stray = std::count(selection.begin(), selection.end(), id) == 0 && text.find(L'%') != std::wstring::npos;
        if (format != kFormatTexts.end() ? Conversions(text) != format->second : stray)
            zvtest::Fail(ZV_HERE, name + ": placeholders");
    }
}

// Import maps a cell's text back to its choice and a header's type name back
// to its type: the texts of one kind differ and hold nothing that ends them
// early (a cell ends at TAB or ","; the export header writes "(" + type name
// + ")", and import reads the name up to ")", TAB, ",", CR or LF).
TEST_CASE(Res_ChoiceAndTypeTextsTellThemselvesApart) {
    std::vector<UINT> types;
    for (UINT type = 0; type < 9; ++type) types.push_back(IDS_TYPE_BASE + type);
    const struct {
        std::vector<UINT> ids;
        const wchar_t* ends;
    } kinds[] = {{{IDS_PRIORITY_NORMAL, IDS_PRIORITY_HIGH, IDS_PRIORITY_LOW}, L",\t"}, {{IDS_NO, IDS_YES}, L",\t"},
                 {{IDS_CHECK_CLEAR, IDS_CHECK_SET}, L",\t"}, {SelectionIds(), L",\t"}, {types, L"),\t\r\n"}};
    for (HINSTANCE lang : {hLangModule, kGermanModule}) {
        for (const auto& kind : kinds)
            for (size_t i = 0; i < kind.ids.size(); ++i) {
                std::wstring text = Text(lang, kind.ids[i]);
                if (text.find_first_of(kind.ends) != std::wstring::npos) zvtest::Fail(ZV_HERE, zvtest::Show(text));
                for (size_t j = i + 1; j < kind.ids.size(); ++j)
                    if (text == Text(lang, kind.ids[j])) zvtest::Fail(ZV_HERE, zvtest::Show(text) + " twice");
            }
        // Check all / uncheck all write texts that import reads back as check choices.
        CHECK_EQ(Text(lang, IDS_CHECKED), Text(lang, IDS_CHECK_SET));
        CHECK_EQ(Text(lang, IDS_UNCHECKED), Text(lang, IDS_CHECK_CLEAR));
    }
}

TEST_CASE(Res_ContextMenusByPosition) {
    HMENU menu = LoadMenuW(hLangModule, MAKEINTRESOURCEW(IDM_CONTEXT_MENUS));
    CHECK_EQ(GetMenuItemCount(menu), 5);
    const std::vector<UINT> tree = {IDM_OPEN, IDM_NEW_LIST, IDM_IMPORT, IDM_DELETE_CTX, IDM_RENAME_CTX};
    for (int pos : {CTX_TREE_TOP_LEVEL, CTX_TREE_IN_CATEGORY}) CheckCommands(GetSubMenu(menu, pos), tree, ZV_HERE);
    CheckCommands(GetSubMenu(menu, CTX_TEMPLATES), {IDM_NEW_TEMPLATE_CTX, IDM_EDIT_TEMPLATE_CTX, IDM_DELETE_TEMPLATE_CTX},
                  ZV_HERE);
    // (The item entries' places: the list window's context-menu test.)
    CheckCommands(GetSubMenu(GetSubMenu(menu, CTX_LIST_ITEMS), LISTWIN_POS_ROW_COLOR_POPUP),
                  {IDM_ROW_YELLOW, IDM_ROW_RED, IDM_ROW_GREEN, IDM_ROW_BLUE, IDM_ROW_NONE, IDM_ITEM_COLOR}, ZV_HERE);
    DestroyMenu(menu);
}

// Every soft-key bar, in English and German: two keys (the about screen has
// one) with short labels, each a command or a popup with entries; the key IDs
// the code finds the keys by (0: any), and the commands the popups offer.
TEST_CASE(Res_SoftKeyBars) {
    HINSTANCE lang = hLangModule, program = kProgramModule;
    const struct {
        HINSTANCE module;
        UINT menu, left, right;
        std::vector<UINT> commands;
    } bars[] = {
        {lang, IDM_MAIN_MENUBAR, IDM_OPEN, 0,
         {IDM_NEW_LIST, IDM_NEW_CATEGORY, IDM_DELETE, IDM_RENAME, IDM_SETTINGS, IDM_ABOUT, IDM_LISTS_FOLDER, IDM_EXIT,
          IDM_IMPORT}},
        {lang, IDM_LIST_WINDOW_MENUBAR, IDM_SAVE, 0,
         {IDM_ADD_ITEM, IDM_EDIT_ITEM, IDM_DELETE_ITEM, IDM_LIST_ICON, IDM_ITEM_COLOR, IDM_AUTOSIZE_COLUMNS, IDM_EXPORT,
          IDM_DELETE_CHECKED, IDM_CHECK_ALL, IDM_UNCHECK_ALL, IDM_ROW_YELLOW, IDM_ROW_RED, IDM_ROW_GREEN, IDM_ROW_BLUE,
          IDM_ROW_NONE}},
        {lang, IDM_OK_CANCEL_MENUBAR, IDC_OK, IDC_CANCEL, {}},
        {lang, IDM_ITEM_EDIT_MENUBAR, IDOK, IDCANCEL, {}},
        {lang, IDM_FILE_SELECT_MENUBAR, IDC_FILE_SELECT_ACCEPT, IDCANCEL, {}},
        {lang, IDM_TEMPLATE_EDITOR_MENUBAR, IDC_OK, 0,
         {IDM_ADD_FIELD, IDM_DELETE_FIELD, IDM_DELETE_ALL_FIELDS, IDM_FIELD_UP, IDM_FIELD_DOWN, IDM_TEMPLATE_ICON,
          IDC_CANCEL}},
        {lang, IDM_NEW_LIST_MENUBAR, 0, 0, {IDM_CREATE_LIST, IDM_NEW_TEMPLATE_FOR_LIST}},
        {lang, IDM_TEMPLATES_MANAGER_MENUBAR, IDC_OK, 0,
         {IDM_NEW_TEMPLATE, IDM_EDIT_TEMPLATE, IDM_DELETE_TEMPLATE, IDM_TEMPLATES_FOLDER}},
        {lang, IDM_SETTINGS_MENUBAR, 0, 0, {IDC_OK, IDM_SETTINGS_ABOUT}},
        {lang, IDM_ABOUT_MENUBAR, IDOK, 0, {}},
        // The colour picker addresses its keys as 1 and 2 and refills popup 2.
        {lang, IDM_COLOR_PICKER_MENUBAR, IDOK, IDM_COLOR_MENU_POPUP,
         {IDM_COLOR_CANCEL, IDM_COLOR_DEFAULT, IDM_COLOR_SLIDERS, IDM_COLOR_HTML, IDM_COLOR_PALETTE}},
        // Settings pages find their keys by the commands 40051 and 123456, in
        // both modules that hold the page menus.
        {lang, IDM_SETTINGS_PAGE_ONE_TAB, IDM_SAVE, IDM_PAGE_MENU_POPUP, {}},
        {program, IDM_PROGRAM_PAGE_ONE_TAB, IDM_SAVE, IDM_PAGE_MENU_POPUP, {}},
        {program, IDM_PROGRAM_PAGE_TABS, IDM_SAVE, IDM_PAGE_MENU_POPUP, {}},
    };
    // A menu added to the module is listed here, or its labels go unchecked.
    std::set<UINT> listed = {IDM_CONTEXT_MENUS};
    for (const auto& bar : bars) listed.insert(bar.menu);
    for (UINT id : ResourceNames(lang, RT_MENU)) CHECK(listed.count(id));
    for (const auto& bar : bars)
        for (HINSTANCE module : {bar.module, bar.module == lang ? kGermanModule : nullptr}) {
            if (!module) continue;
            HMENU m = LoadMenuW(module, MAKEINTRESOURCEW(bar.menu));
            std::string what = "menu " + std::to_string(bar.menu) + (module == kGermanModule ? " (German)" : "");
            if (GetMenuItemCount(m) != (bar.menu == IDM_ABOUT_MENUBAR ? 1 : 2)) zvtest::Fail(ZV_HERE, what + ": keys");
            for (int i = 0; i < GetMenuItemCount(m); ++i) {
                wchar_t label[64] = L"";
                GetMenuStringW(m, i, label, 64, MF_BYPOSITION);
                // Each key gets half of a 240-pixel bar.
                if (!label[0] || std::wcslen(label) > 10)
                    zvtest::Fail(ZV_HERE, what + ": label " + zvtest::Show(label));
                HMENU sub = GetSubMenu(m, i);
                if (sub ? GetMenuItemCount(sub) == 0 : GetMenuItemID(m, i) == 0 || GetMenuItemID(m, i) == (UINT)-1)
                    zvtest::Fail(ZV_HERE, what + ": key " + std::to_string(i) + " does nothing");
            }
            if (bar.left && KeyId(m, 0) != bar.left) zvtest::Fail(ZV_HERE, what + ": left key");
            if (bar.right && KeyId(m, 1) != bar.right) zvtest::Fail(ZV_HERE, what + ": right key");
            CheckCommands(m, bar.commands, ZV_HERE);
            DestroyMenu(m);
        }
}

// A text or a menu entry added to one module and forgotten in the other
// fails here: the same resources, the same string IDs with the same
// placeholders in the same order, and menus of the same shape (their
// soft-key labels: Res_SoftKeyBars).
TEST_CASE(Res_GermanModuleMatchesEnglish) {
    HINSTANCE english = hLangModule, german = kGermanModule;
    CHECK(german != nullptr);
    for (LPCWSTR type : {RT_STRING, RT_MENU, RT_DIALOG})
        CHECK(ResourceNames(english, type) == ResourceNames(german, type));
    std::map<UINT, std::wstring> englishTexts = AllStrings(english), germanTexts = AllStrings(german);
    CHECK(englishTexts.size() > 100);
    for (const auto& [id, text] : englishTexts) {
        std::string what = "string " + std::to_string(id);
        auto other = germanTexts.find(id);
        if (other == germanTexts.end()) zvtest::Fail(ZV_HERE, what + " is missing in German");
        else if (Conversions(other->second) != Conversions(text)) zvtest::Fail(ZV_HERE, what + ": placeholders differ");
        else if (other->second.size() >= 255) zvtest::Fail(ZV_HERE, what + " is too long in German");
    }
    for (const auto& [id, text] : germanTexts)
        if (!englishTexts.count(id)) zvtest::Fail(ZV_HERE, "string " + std::to_string(id) + " is only in German");
    for (UINT id : ResourceNames(english, RT_MENU)) {
        HMENU a = LoadMenuW(english, MAKEINTRESOURCEW(id)), b = LoadMenuW(german, MAKEINTRESOURCEW(id));
        CHECK(a != nullptr);
        if (MenuShape(a) != MenuShape(b)) zvtest::Fail(ZV_HERE, "menu " + std::to_string(id) + ": " + MenuShape(b));
        DestroyMenu(a);
        DestroyMenu(b);
    }
}

// Every image by module: TGAs (square, of one size), the installer's icons,
// bitmaps (their size and, where a mask or a 3-D face colour is keyed on it,
// the corner pixel) and the icons every dialog and the file associations show.
TEST_CASE(Res_ImagesOfEveryModule) {
    HINSTANCE low = hImageModule, high = kHighDpiModule, program = kProgramModule;
    const struct {
        HINSTANCE module;
        UINT id;
        int size;
    } tgas[] = {
        {low, IDT_ROOT, 16},          {low, IDT_DEFAULT_LIST, 16},   {low, IDT_CATEGORY, 16},
        {high, IDT_ROOT, 32},         {high, IDT_DEFAULT_LIST, 32},  {high, IDT_CATEGORY, 32},
        {low, IDT_PRIORITY_HIGH, 12}, {low, IDT_PRIORITY_LOW, 12},   {high, IDT_PRIORITY_HIGH, 24},
        {high, IDT_PRIORITY_LOW, 24}, {program, IDT_PROGRAM_PRIORITY_HIGH, 12},
        {program, IDT_PROGRAM_PRIORITY_LOW, 12}, {program, IDT_PROGRAM_DEFAULT_LIST, 16},
    };
    for (const auto& t : tgas) CheckTga(TgaResource(t.module, t.id), t.size, ZV_HERE);
    std::wstring icons = BuildFolder() + L"Icons\\";
    WIN32_FIND_DATAW fd;
    HANDLE find = FindFirstFileW((icons + L"*.tga").c_str(), &fd);
    int count = 0;
    for (bool more = find != INVALID_HANDLE_VALUE; more; more = FindNextFileW(find, &fd), ++count)
        CheckTga(doctest::ReadBytes(icons + fd.cFileName), 16, ZV_HERE);
    if (find != INVALID_HANDLE_VALUE) FindClose(find);
    CHECK(count >= 12);

    const COLORREF kAny = CLR_INVALID, kWhite = RGB(255, 255, 255), kGreen = RGB(0, 255, 0),
                   kFace = RGB(192, 192, 192);
    const struct {
        HINSTANCE module;
        UINT id;
        int width, height;
        COLORREF corner;
    } bitmaps[] = {
        // The tree's strips: white is their mask, so no box shows around an image.
        {low, IDB_IMAGE_STRIP, 16 * IMAGE_STRIP_COUNT, 16, kWhite},
        {high, IDB_IMAGE_STRIP, 32 * IMAGE_STRIP_COUNT, 32, kAny},
        {program, IDB_PROGRAM_IMAGE_STRIP, 16 * IMAGE_STRIP_COUNT, 16, kAny},
        {low, IDB_CHECKED_DENSITY, 12, 12, kAny},      {low, IDB_UNCHECKED_DENSITY, 12, 12, kAny},
        {high, IDB_CHECKED_DENSITY, 24, 24, kAny},     {high, IDB_UNCHECKED_DENSITY, 24, 24, kAny},
        {low, IDB_SORT_UP_DENSITY, 8, 8, kAny},        {high, IDB_SORT_DOWN_DENSITY, 16, 16, kAny},
        {program, IDB_CHECKED, 12, 12, kAny},          {program, IDB_UNCHECKED, 12, 12, kAny},
        // Image lists of the small strips are keyed on pure green; header
        // marks sit on the 3-D face grey that LR_LOADMAP3DCOLORS replaces.
        {program, IDB_SMALL_SORT_MARKS, 16, 8, kGreen}, {program, IDB_SMALL_PRIORITY, 16, 8, kGreen},
        {program, IDB_SORT_DOWN, 8, 8, kFace},         {program, IDB_SORT_UP, 8, 8, kFace},
    };
    for (const auto& b : bitmaps) CheckBitmap(b.module, b.id, b.width, b.height, b.corner, ZV_HERE);
    for (UINT id : {IDI_ZORVEL, IDI_MAIN_WINDOW}) {
        HICON icon = (HICON)LoadImageW(program, MAKEINTRESOURCEW(id), IMAGE_ICON, 32, 32, 0);
        CHECK(icon != nullptr);
        DestroyIcon(icon);
    }
}

// Decoded as the program decodes them (rows top first, pixels blue, green,
// red, alpha), the images stand upright and keep their colours.
TEST_CASE(Res_TargaImagesUprightInTheirColours) {
    // The house narrows to the roof's tip at the top and stands on a wide
    // wall: the first drawn row must be the narrow one.
    for (HINSTANCE module : {hImageModule, kHighDpiModule}) {
        PlanarImage img;
        CHECK_EQ(LoadTgaResource(img, module, IDT_ROOT), S_OK);
        // The opaque pixels of a row.
        auto opaque = [&img](int row) {
            const unsigned char* alpha = img.alpha + row * img.width;
            return img.width - (int)std::count(alpha, alpha + img.width, 0);
        };
        int first = 0, last = img.height - 1;
        while (first < img.height && opaque(first) == 0) ++first;
        while (last > 0 && opaque(last) == 0) --last;
        CHECK(first < last);
        if (first < last) CHECK(opaque(first) < img.width / 4 && opaque(last) > img.width / 2);
    }
    // The low-density folder: row 3 starts with its outline colour #8A5A0B,
    // the top-left pixel is clear.
    PlanarImage folder;
    CHECK_EQ(LoadTgaResource(folder, hImageModule, IDT_CATEGORY), S_OK);
    if (folder.IsEmpty()) return;
    int at = 3 * folder.width;
    CHECK_BYTES((ByteVec{folder.red[at], folder.green[at], folder.blue[at], folder.alpha[at]}),
                (ByteVec{0x8A, 0x5A, 0x0B, 0xFF}));
    CHECK_EQ((int)folder.alpha[0], 0);
}
