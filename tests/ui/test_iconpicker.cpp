// The icon picker driven through its real dialog over a folder of TGA files
// written here: scan order, the size limit at 96 and 192 dpi, the cache that
// is never rescanned, and what confirm and cancel do to the caller's icon.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "images/PlanarImage.h"
#include "settings/AppSettings.h"
#include "settings/IconPicker.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

const wchar_t kIconsRoot[] = L"\\zvtest-icons\\";
const wchar_t kMissingRoot[] = L"\\zvtest-icons-missing\\";
const int kList = IconPicker::kIconListId;
const int kProgramImageStrip = 163;  // passed through by the callers, unused by the picker

const COLORREF kGreen = RGB(0, 200, 0);
const COLORREF kRed = RGB(220, 0, 0);
const COLORREF kBlue = RGB(0, 0, 230);
const COLORREF kGrey = RGB(90, 90, 90);

// An uncompressed true-colour TGA filled with one colour: 18-byte header,
// then bottom-up rows of blue, green, red (and alpha at 32 bits).
void WriteTga(const std::wstring& path, int width, int height, int bits, COLORREF c, BYTE imageType = 2) {
    std::vector<BYTE> bytes = {0, 0, imageType, 0, 0, 0, 0, 0, 0, 0, 0, 0, (BYTE)width, (BYTE)(width >> 8),
                               (BYTE)height, (BYTE)(height >> 8), (BYTE)bits, (BYTE)(bits == 32 ? 8 : 0)};
    for (int i = 0; i < width * height; ++i) {
        bytes.insert(bytes.end(), {GetBValue(c), GetGValue(c), GetRValue(c)});
        if (bits == 32) bytes.push_back(255);
    }
    uitest::WriteBytes(path, bytes);
}

// The icons folder of these tests, on drive C: of the test prefix, and the
// settings and cache put back afterwards. Scan order: the subfolder's icon,
// then the folder's own files by name; big.tga counts only at 192 dpi and
// mapped.tga (colour-mapped) never.
struct IconFolderFixture {
    uitest::OnDriveC drive;
    CeString oldFolder;

    IconFolderFixture() {
        // The value itself, not Set: nothing here should reach the registry.
        oldFolder = g_appSettings.IconsFolder.value;
        std::wstring root = kIconsRoot;
        uitest::RemoveTree(root);
        CreateDirectoryW(root.c_str(), nullptr);
        CreateDirectoryW((root + L"sub").c_str(), nullptr);
        WriteTga(root + L"a.tga", 16, 16, 32, kRed);
        WriteTga(root + L"big.tga", 32, 32, 32, kGrey);
        WriteTga(root + L"c.tga", 12, 12, 24, kBlue);
        WriteTga(root + L"mapped.tga", 16, 16, 24, kGrey, 1);
        WriteTga(root + L"sub\\b.tga", 16, 16, 32, kGreen);
        WriteTga(root + L"sub\\notes.txt", 4, 4, 24, kGrey);
        g_appSettings.IconsFolder.value = kIconsRoot;
        IconPicker::ReleaseIconCache();
    }
    ~IconFolderFixture() {
        IconPicker::ReleaseIconCache();
        g_appSettings.IconsFolder.value = oldFolder;
        uitest::RemoveTree(kIconsRoot);
    }
};

bool IsSolid(const PlanarImage& image, int width, int height, COLORREF c) {
    if (!image.IsDrawable() || image.width != width || image.height != height) return false;
    for (int i = 0; i < width * height; ++i)
        if (RGB(image.red[i], image.green[i], image.blue[i]) != c || image.alpha[i] != 255)
            return false;
    return true;
}

void MakeSolid(PlanarImage& image, int size, COLORREF c) {
    image.Allocate(size, size);
    for (int i = 0; i < size * size; ++i) {
        image.red[i] = GetRValue(c);
        image.green[i] = GetGValue(c);
        image.blue[i] = GetBValue(c);
        image.alpha[i] = 255;
    }
}

bool RunPicker(ui::Script& script, PlanarImage& image, const char* file, int line) {
    auto run = [&] {
        return (INT_PTR)IconPicker::Run(nullptr, hLangModule, (INT_PTR)hInstance, kProgramImageStrip, 0, image);
    };
    return ui::RunModal(script, run, file, line) != 0;
}

// True when some pixel of the preview band's middle row has this colour.
bool BandShows(ui::Dlg& d, COLORREF c) {
    RECT client = d.ClientRect();
    int y = client.bottom - ScaleY(14);
    HDC dc = GetDC(d.hwnd);
    bool found = false;
    for (int x = 0; x < client.right && !found; ++x) found = GetPixel(dc, x, y) == c;
    ReleaseDC(d.hwnd, dc);
    return found;
}

// A tap in the middle of an icon's cell.
void TapIcon(ui::Dlg& d, int row) {
    RECT r = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(d.Item(kList), LVM_GETITEMRECT, row, (LPARAM)&r);
    d.Tap(kList, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

}  // namespace

// Cells of 44 x 30 phone pixels, ten icons fit five to a row; the 32-pixel
// icon is offered only at 192 dpi.
TEST_CASE(Ui_Icon_GridCellsAndSizeLimitFollowDensity) {
    IconFolderFixture fixture;
    for (int i = 0; i < 8; ++i)
        WriteTga(std::wstring(kIconsRoot) + L"m" + std::to_wstring(i) + L".tga", 16, 16, 32,
                 RGB(30 * i, 120, 200 - 20 * i));
    for (int k : {1, 2}) {
        uitest::DensityScope density(96 * k);
        IconPicker::ReleaseIconCache();
        PlanarImage image;
        MakeSolid(image, 16 * k, kGrey);
        ui::Script s;
        s.Step([k](ui::Dlg& d) {
            CHECK_EQ(d.ListCount(kList), k == 1 ? 11 : 12);
            RECT r = {LVIR_SELECTBOUNDS, 0, 0, 0};
            SendMessageW(d.Item(kList), LVM_GETITEMRECT, 0, (LPARAM)&r);
            CHECK_EQ(r.right - r.left, (LONG)(44 * k));
            TapIcon(d, 2);  // 96 dpi: c.tga; 192 dpi: big.tga
        });
        s.Step([k](ui::Dlg& d) {
            CHECK_EQ(d.ListFocused(kList), 2);
            CHECK(BandShows(d, k == 1 ? kBlue : kGrey));
            d.SoftKey(ui::Left);
        });
        CHECK(RunPicker(s, image, ZV_HERE));
        if (k == 1) CHECK(IsSolid(image, 12, 12, kBlue));
        else CHECK(IsSolid(image, 32, 32, kGrey));
    }
}

// The folder is read once: an icon added later does not show. (The scan
// order, subfolders first, then the folder's own files by name, shows in the
// colours of the cells picked below.)
TEST_CASE(Ui_Icon_NoRescanAndAMissingFolder) {
    IconFolderFixture fixture;
    PlanarImage image;
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        CHECK_EQ(d.ListFocused(kList), -1);
        uitest::ControlsFit(d.hwnd, {kList}, ZV_HERE);  // the preview band below: every BandShows check
        d.SoftKey(ui::Right);
    });
    CHECK(!RunPicker(s, image, ZV_HERE));
    CHECK(image.IsEmpty());
    WriteTga(std::wstring(kIconsRoot) + L"new.tga", 16, 16, 32, kGrey);
    ui::Script second;
    second.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        d.Back();
    });
    RunPicker(second, image, ZV_HERE);

    // A missing folder gives an empty grid, and Done keeps the caller's icon.
    IconPicker::ReleaseIconCache();
    g_appSettings.IconsFolder.value = kMissingRoot;
    MakeSolid(image, 16, kBlue);
    ui::Script missing;
    missing.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 0);
        d.Key(VK_DOWN);
        d.SoftKey(ui::Left);
    });
    CHECK(RunPicker(missing, image, ZV_HERE));
    CHECK(IsSolid(image, 16, 16, kBlue));
}

// What the caller's icon becomes. Each row: the icon the caller holds
// (size 0: none), the picks (a key or a tap on a cell, each with the
// colour the preview band must then show), how the dialog is left, and the
// outcome. Back and Cancel leave the caller's planes as they were, and a
// chosen icon is a copy of the cache's.
TEST_CASE(Ui_Icon_ConfirmOrCancelTheCallersIcon) {
    IconFolderFixture fixture;
    struct Pick {
        UINT key;  // 0: tap cell `row`
        int row;
        COLORREF band;
    };
    const struct {
        int size;
        COLORREF start;
        std::vector<Pick> picks;
        UINT leave;  // VK_F1 Done, VK_F2 Cancel, VK_ESCAPE Back, VK_RETURN
        bool confirmed;
        int resultSize;
        COLORREF result;
    } cases[] = {
        {16, kGrey, {{VK_HOME, 0, kGreen}, {VK_RIGHT, 0, kRed}}, VK_F1, true, 16, kRed},
        {16, kGrey, {{0, 2, kBlue}}, VK_RETURN, true, 12, kBlue},
        {16, kGrey, {{0, 1, kRed}}, VK_ESCAPE, false, 16, kGrey},
        {16, kGrey, {{0, 0, kGreen}}, VK_F2, false, 16, kGrey},
        {16, kBlue, {}, VK_F1, true, 16, kBlue},  // confirmed without a choice: the icon stays
        {0, kBlue, {}, VK_F1, true, 0, kBlue},    // no icon stays no icon
    };
    for (const auto& c : cases) {
        PlanarImage image;
        if (c.size) MakeSolid(image, c.size, c.start);
        unsigned char* planes = image.red;
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            if (c.size) CHECK(BandShows(d, c.start));  // the caller's icon at the start
        });
        for (const Pick& p : c.picks) {
            s.Step([&](ui::Dlg& d) { p.key ? d.Key(p.key) : TapIcon(d, p.row); });
            s.Step([&](ui::Dlg& d) { CHECK(BandShows(d, p.band)); });
        }
        s.Step([&](ui::Dlg& d) { d.Key(c.leave); });
        CHECK_EQ(RunPicker(s, image, ZV_HERE), c.confirmed);
        if (!c.resultSize) CHECK(image.IsEmpty());
        else CHECK(IsSolid(image, c.resultSize, c.resultSize, c.result));
        if (!c.confirmed) CHECK(image.red == planes);
        for (size_t i = 0; i < IconPicker::CachedIconCount(); ++i)  // the cache keeps its own copy
            CHECK(IconPicker::CachedIcon(i).red != image.red);
    }
}
