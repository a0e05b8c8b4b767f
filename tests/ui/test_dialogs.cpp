// The dialogs of dialogs/, the file selection dialog and the text prompt,
// driven through their keys, soft keys and taps.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/TextEntry.h"
#include "settings/AppSettings.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

const wchar_t kRoot[] = L"\\zvtest-fdlg\\";

// A scratch folder tree under \zvtest-fdlg\: entries ending in "\" are
// folders, the others empty files. Removed again at the end of the test.
class ScratchTree {
public:
    explicit ScratchTree(std::vector<const wchar_t*> entries) {
        uitest::RemoveTree(kRoot);
        CreateDirectoryW(kRoot, nullptr);
        for (const wchar_t* entry : entries) {
            std::wstring path = std::wstring(kRoot) + entry;
            if (path.back() == L'\\') CreateDirectoryW(path.c_str(), nullptr);
            else uitest::WriteBytes(path, {});
        }
    }
    // The tree goes, and so does any memory of a folder in it.
    ~ScratchTree() {
        uitest::RemoveTree(kRoot);
        g_fileSelectLastFolder = m_lastFolder;
    }
    std::wstring operator/(const wchar_t* sub) const { return std::wstring(kRoot) + sub; }

private:
    uitest::OnDriveC m_drive;
    CeString m_lastFolder = g_fileSelectLastFolder;
};

// The list's rows, joined with "|".
std::wstring Rows(ui::Dlg& d) {
    std::wstring out;
    for (int i = 0; i < d.ListCount(kFileSelectList); ++i) out += (i ? L"|" : L"") + d.ListText(kFileSelectList, i);
    return out;
}

std::wstring Selected(ui::Dlg& d) { return d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)); }

// Moves the selection down to the row named `name` with the arrow keys, as a user does.
void ArrowTo(ui::Dlg& d, const wchar_t* name) {
    d.SetFocusTo(kFileSelectList);
    int at = std::max(d.ListSelectionMark(kFileSelectList), 0);
    for (; at < d.ListCount(kFileSelectList) && d.ListText(kFileSelectList, at) != name; ++at) d.Key(VK_DOWN);
}

FileSelectRequest Request(int mode, const std::wstring& folder, const wchar_t* extension = nullptr) {
    FileSelectRequest req;
    req.mode = mode;
    req.folder = folder.c_str();
    if (extension) req.extension = extension;
    return req;
}

INT_PTR Run(ui::Script& s, FileSelectRequest& req, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return (INT_PTR)RunFileSelectDialog(nullptr, req); }, file, line);
}

INT_PTR Run(ui::Script& s, TextEntryRequest& req, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return (INT_PTR)RunTextEntryDialog(nullptr, req); }, file, line);
}

}  // namespace

// Folders first, then files, each by name ignoring case; an extension keeps
// only its files (any case), and a folder named like a match stays a folder.
// At 192 dpi the controls fit the screen, the list's one column fills it and
// the bar sits right under the dialog's area; rows carry the shell's icons.
TEST_CASE(Ui_FileDlg_FoldersFirstThenFilesIgnoringCaseAt192Dpi) {
    uitest::DensityScope density(192);
    struct Row {
        std::vector<const wchar_t*> entries;
        int mode;
        const wchar_t* extension;
        const wchar_t* rows;
    } table[] = {
        {{L"Zeta\\", L"beta\\", L"alpha.txt", L"Gamma.txt", L"delta.TXT", L"_under.txt"}, FileSelectLoad, nullptr,
         L"beta|Zeta|_under.txt|alpha.txt|delta.TXT|Gamma.txt"},
        {{L"alpha", L"Zeta\\"}, FileSelectSave, nullptr, L"Zeta|alpha"},
        {{L"a.csv", L"b.CSV", L"c.txt", L"d.csvx", L"e.csv.bak", L"sub.csv\\"}, FileSelectLoad, L".CSV",
         L"sub.csv|a.csv|b.CSV"},
    };
    for (const Row& row : table) {
        ScratchTree tree(row.entries);
        FileSelectRequest req = Request(row.mode, tree / L"", row.extension);
        if (row.extension) req.filterText = L"CSV File";
        req.fileName = L"Groceries";
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(Rows(d), std::wstring(row.rows));
            CHECK_EQ(d.Text(kFileSelectTypeField), std::wstring(row.extension ? L"CSV File" : L"All Files(*.*)"));
            std::vector<int> ids = {kFileSelectTypeField, kFileSelectPathLine, kFileSelectList};
            if (row.mode == FileSelectSave) {
                ids.insert(ids.begin(), kFileSelectNameEdit);
                CHECK_EQ(d.Text(kFileSelectNameEdit), std::wstring(L"Groceries"));
            }
            uitest::ControlsFit(d.hwnd, ids, ZV_HERE);
            HWND list = d.Item(kFileSelectList);
            CHECK_EQ((int)SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), (int)d.ClientRect(kFileSelectList).right);
            CHECK_EQ(uitest::RectInParent(d.MenuBar()).top, d.ClientRect().bottom);
            if (row.mode == FileSelectLoad && !row.extension) {
                CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(kRoot));
                // A short path leaves the rest of the line to the hint that a tap goes up, painted there.
                RECT line = uitest::RectInParent(d.Item(kFileSelectPathLine));
                CHECK(line.right < d.ClientRect().right - 2 * ScaleX(2));
                HDC dc = GetDC(d.hwnd);
                int inked = 0;
                for (int x = line.right; x < d.ClientRect().right; ++x)
                    for (int y = line.top; y < line.bottom; ++y) inked += GetPixel(dc, x, y) != RGB(255, 255, 255);
                ReleaseDC(d.hwnd, dc);
                CHECK(inked > 0);
                CHECK(!d.Item(kFileSelectNameEdit));  // the name box is for saving only
                CHECK_EQ(d.FocusId(), (int)kFileSelectList);
                // Folders share an icon, and so do files of one extension whatever its case.
                auto image = [&](int row) {
                    LVITEMW item = {};
                    item.mask = LVIF_IMAGE;
                    item.iItem = row;
                    SendMessageW(list, LVM_GETITEMW, 0, (LPARAM)&item);
                    return item.iImage;
                };
                for (int i = 0; i < 6; ++i) CHECK(image(i) >= 0);
                CHECK_EQ(image(0), image(1));
                CHECK_EQ(image(3), image(4));
                int cx = 0, cy = 0;
                ImageList_GetIconSize((HIMAGELIST)SendMessageW(list, LVM_GETIMAGELIST, LVSIL_SMALL, 0), &cx, &cy);
                CHECK_EQ(cx, ScaleX(16));
            }
            d.SoftKey(ui::Right);
        });
        CHECK_EQ(Run(s, req), 0);
        CHECK_EQ(req.path.c_str(), L"");
    }
}

// Up at the root stays there, and the path has the whole line: no hint.
TEST_CASE(Ui_FileDlg_FolderModeListsFoldersInFileSystemOrderUpToTheRoot) {
    ScratchTree tree({L"m\\", L"B\\", L"x.txt", L"a\\", L"Z\\", L"c.zvl"});
    std::wstring expected;  // the order the file system gives
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((tree / L"*").c_str(), &found);
    do {
        std::wstring name = found.cFileName;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && name != L"." && name != L"..")
            expected += (expected.empty() ? L"" : L"|") + name;
    } while (FindNextFileW(find, &found));
    FindClose(find);

    FileSelectRequest req = Request(FileSelectFolder, tree / L"");
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(Rows(d), expected);
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(L"\\"));
        CHECK_EQ(d.ClientRect(kFileSelectPathLine).right, d.ClientRect().right - 2 * ScaleX(2));
        d.Back();
        d.Tap(kFileSelectPathLine, 1, d.ClientRect(kFileSelectPathLine).bottom / 2);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(L"\\"));
        CHECK_EQ(Selected(d), std::wstring(L"zvtest-fdlg"));
        d.Enter();
    });
    s.Step([](ui::Dlg& d) {
        ArrowTo(d, L"m");
        d.Enter();  // walks into m
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kFileSelectList), 0);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(Run(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"m\\").c_str());
}

// Loading takes a file, never a folder.
TEST_CASE(Ui_FileDlg_WalkDownWithEnterAndUpWithBackOrTapThenLoad) {
    ScratchTree tree({L"one\\", L"one\\two\\", L"one\\two\\deep.txt", L"top.txt"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Enter(); });  // row 0 is the folder "one"
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        CHECK_EQ(Rows(d), std::wstring(L"two"));
        CHECK_EQ(d.ListSelectionMark(kFileSelectList), 0);
        d.Enter();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\two\\");
        CHECK_EQ(Rows(d), std::wstring(L"deep.txt"));
        d.Enter();  // a file does nothing on activation: Back then goes up from here
        d.Back();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        CHECK_EQ(Selected(d), std::wstring(L"two"));
        // A tap lands on the dialog: the path line lets clicks through.
        RECT r = uitest::RectInParent(d.Item(kFileSelectPathLine));
        d.Tap(d.hwnd, r.left + 1, r.bottom - 1);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        CHECK_EQ(Rows(d), std::wstring(L"one|top.txt"));
        CHECK_EQ(Selected(d), std::wstring(L"one"));
        d.SoftKey(ui::Left);  // a folder is not a choice: it neither ends the dialog nor opens
        d.TapCell(kFileSelectList, 0, 0);  // one tap opens a folder
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        ArrowTo(d, L"top.txt");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(Run(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"top.txt").c_str());
    CHECK_EQ(ui::MessageBoxes().size(), 0u);
}

// Enter in the name box refuses an empty name without opening the selected
// folder, and saves a good one. Down and Up move between the name box and
// the list; Enter in the list and the action command open the selected
// folder, and the name is saved there with the extension.
TEST_CASE(Ui_FileDlg_SaveRefusesEmptyAndIllegalNamesAndSavesInFolderWalkedTo) {
    ScratchTree tree({L"archive\\", L"archive\\a.CSV", L"old.CSV"});
    FileSelectRequest req = Request(FileSelectSave, tree / L"", L".CSV");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)kFileSelectNameEdit);
        CHECK_EQ(Selected(d), std::wstring(L"archive"));
        d.Enter();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        d.Type(L"a:b");
        d.SoftKey(ui::Left);
    });
    for (const wchar_t* bad : {L"x/y", L"*", L"q?", L"\"", L"<", L">", L"p|q"}) {
        s.Step([bad](ui::Dlg& d) {
            SetWindowTextW(d.Item(kFileSelectNameEdit), bad);
            d.Command(IDC_FILE_SELECT_ACCEPT);
        });
    }
    s.Step([](ui::Dlg& d) {
        SetWindowTextW(d.Item(kFileSelectNameEdit), L"week 12");
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)kFileSelectList);
        d.Enter();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(Rows(d), std::wstring(L"a.CSV"));
        d.Back();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        d.Command(IDOK);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"archive\\");
        d.Key(VK_UP);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)kFileSelectNameEdit);
        d.Enter();
    });
    CHECK_EQ(Run(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"archive\\week 12.CSV").c_str());
    CHECK_EQ(g_fileSelectLastFolder.c_str(), (tree / L"archive\\").c_str());
    std::vector<uitest::BoxWant> want(9, {L"File name include illegal characters", L"File Name Error", MB_ICONHAND});
    want[0].text = L"File name value is missing";
    uitest::CheckBoxes(want, ZV_HERE);
}

// Each run: the request's mode and folder ("": the last one), the folder
// remembered before it, where it opens, the soft key pressed and the choice.
TEST_CASE(Ui_FileDlg_LastFolderCarriesToTheNextDialog) {
    ScratchTree tree({L"keep\\", L"keep\\k.txt", L"other\\"});
    const struct {
        int mode;
        std::wstring folder;
        const wchar_t* remembered;
        std::wstring opens;
        ui::SoftKeySide key;
        std::wstring chosen;
    } rows[] = {
        {FileSelectFolder, tree / L"keep", nullptr, tree / L"keep\\", ui::Left, tree / L"keep\\"},  // no trailing "\"
        // A cancelled dialog leaves the last folder alone.
        {FileSelectLoad, tree / L"other\\", nullptr, tree / L"other\\", ui::Right, L""},
        {FileSelectLoad, L"", nullptr, tree / L"keep\\", ui::Left, tree / L"keep\\k.txt"},
        // A remembered folder that is gone gives way to its nearest parent.
        {FileSelectFolder, L"", L"gone\\deeper\\", tree / L"", ui::Right, L""},
    };
    for (const auto& row : rows) {
        if (row.remembered) g_fileSelectLastFolder = (tree / row.remembered).c_str();
        FileSelectRequest req = Request(row.mode, row.folder);
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.Text(kFileSelectPathLine), row.opens);
            d.SoftKey(row.key);
        });
        Run(s, req);
        CHECK_EQ(std::wstring(req.path.c_str()), row.chosen);
    }
}

// OK, Enter and an emptied box all confirm; the text is cut at 255. Back
// erases one character and never closes, not even in an empty box; Cancel
// leaves the caller's text as it was. At 192 dpi the box fits the screen and
// uses the list font, scaled.
TEST_CASE(Ui_TextEntry_ConfirmCancelAndBackAt192Dpi) {
    CeString face = g_appSettings.FontFace.value;
    DWORD size = g_appSettings.FontSize.value;
    g_appSettings.FontFace.value = L"Tahoma";
    g_appSettings.FontSize.value = 16;
    uitest::DensityScope density(192);
    std::wstring longText;
    for (int i = 0; i < 300; ++i) longText += (wchar_t)(L'a' + i % 26);
    struct Row {
        const wchar_t* start;
        std::function<void(ui::Dlg&)> act;
        INT_PTR result;
        std::wstring want;
    } rows[] = {
        {L"Pack", [](ui::Dlg& d) { d.Type(L"ing list"); d.SoftKey(ui::Left); }, 1, L"Packing list"},  // caret at end
        {L"", [](ui::Dlg& d) { d.Type(L"Goals"); d.Enter(); }, 1, L"Goals"},
        {L"abc", [](ui::Dlg& d) { d.Back(); d.SoftKey(ui::Left); }, 1, L"ab"},
        {L"x", [](ui::Dlg& d) { d.Back(); d.Back(); d.Back(); d.SoftKey(ui::Left); }, 1, L""},
        {L"abc", [](ui::Dlg& d) { d.Type(L"xy"); d.SoftKey(ui::Right); }, 0, L"abc"},
        {L"", [&](ui::Dlg& d) {
             SetWindowTextW(d.Item(kTextEntryEditId), longText.c_str());
             CHECK_EQ((int)GetWindowTextLengthW(d.Item(kTextEntryEditId)), 300);  // the box itself holds more
             d.SoftKey(ui::Left);
         }, 1, longText.substr(0, 255)},
    };
    for (Row& row : rows) {
        TextEntryRequest req = {};
        lstrcpynW(req.text, row.start, kTextEntryMaxChars + 1);
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(row.start));
            CHECK_EQ(d.FocusId(), kTextEntryEditId);
            uitest::ControlsFit(d.hwnd, {kTextEntryEditId}, ZV_HERE);
            LOGFONTW lf = uitest::FontOf(d.Item(kTextEntryEditId));
            CHECK_EQ(lf.lfHeight, (LONG)ScaleY(16));
            CHECK_EQ((const wchar_t*)lf.lfFaceName, L"Tahoma");
            row.act(d);
        });
        CHECK_EQ(Run(s, req), row.result);
        CHECK_EQ(std::wstring(req.text), row.want);
        CHECK_EQ(ui::MessageBoxes().size(), 0u);
    }
    g_appSettings.FontFace.value = face;
    g_appSettings.FontSize.value = size;
}
