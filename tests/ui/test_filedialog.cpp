// The file selection dialog driven through its keys, soft keys and taps.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "LangIds.h"
#include "app/ScreenScale.h"
#include "base/AppGlobals.h"
#include "dialogs/FileSelectDialog.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"

namespace {

const wchar_t kRoot[] = L"\\zvtest-fdlg\\";

// Device paths are rooted on the current drive; the tests make theirs on C:.
class OnDriveC {
public:
    OnDriveC() {
        GetCurrentDirectoryW(MAX_PATH, m_saved);
        SetCurrentDirectoryW(L"C:\\");
    }
    ~OnDriveC() { SetCurrentDirectoryW(m_saved); }

private:
    wchar_t m_saved[MAX_PATH] = {};
};

void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"*").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(folder + name + L"\\");
            else
                DeleteFileW((folder + name).c_str());
        } while (FindNextFileW(find, &found));
        FindClose(find);
    }
    RemoveDirectoryW(folder.c_str());
}

// A scratch folder tree under \zvtest-fdlg\: entries ending in "\" are
// folders, the others empty files. Removed again at the end of the test.
class ScratchTree {
public:
    explicit ScratchTree(std::initializer_list<const wchar_t*> entries) {
        RemoveTree(kRoot);
        CreateDirectoryW(kRoot, nullptr);
        for (const wchar_t* entry : entries) {
            std::wstring path = std::wstring(kRoot) + entry;
            if (path.back() == L'\\') {
                CreateDirectoryW(path.c_str(), nullptr);
            } else {
                HANDLE h = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
                CloseHandle(h);
            }
        }
    }
    // The tree goes, and so does any memory of a folder in it.
    ~ScratchTree() {
        RemoveTree(kRoot);
        g_fileSelectLastFolder = m_lastFolder;
    }
    std::wstring operator/(const wchar_t* sub) const { return std::wstring(kRoot) + sub; }

private:
    OnDriveC m_drive;
    CeString m_lastFolder = g_fileSelectLastFolder;
};

std::vector<std::wstring> Rows(ui::Dlg& d) {
    std::vector<std::wstring> rows;
    for (int i = 0; i < d.ListCount(kFileSelectList); ++i) rows.push_back(d.ListText(kFileSelectList, i));
    return rows;
}

std::wstring Join(const std::vector<std::wstring>& rows) {
    std::wstring out;
    for (const std::wstring& r : rows) out += (out.empty() ? L"" : L"|") + r;
    return out;
}

int RowOf(ui::Dlg& d, const wchar_t* name) {
    for (int i = 0; i < d.ListCount(kFileSelectList); ++i)
        if (d.ListText(kFileSelectList, i) == name) return i;
    return -1;
}

// Moves the selection to the row named `name` with the arrow keys, as a user does.
void ArrowTo(ui::Dlg& d, const wchar_t* name) {
    d.SetFocusTo(kFileSelectList);
    int row = RowOf(d, name);
    int at = d.ListSelectionMark(kFileSelectList);
    if (at < 0) at = 0;
    for (; at < row; ++at) d.Key(VK_DOWN);
    for (; at > row; --at) d.Key(VK_UP);
}

FileSelectRequest Request(int mode, const std::wstring& folder, const wchar_t* extension = nullptr) {
    FileSelectRequest req;
    req.mode = mode;
    req.folder = folder.c_str();
    if (extension) req.extension = extension;
    return req;
}

INT_PTR Run(ui::Script& s, FileSelectRequest& req, const char* file, int line) {
    return ui::RunModal(s, [&] { return (INT_PTR)RunFileSelectDialog(nullptr, req); }, file, line);
}
#define RUN(s, req) Run(s, req, __FILE__, __LINE__)

}  // namespace

TEST_CASE(Ui_FileDlg_FoldersFirstThenFilesIgnoringCase) {
    ScratchTree tree({L"Zeta\\", L"beta\\", L"alpha.txt", L"Gamma.txt", L"delta.TXT", L"_under.txt"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"");
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(Join(Rows(d)), std::wstring(L"beta|Zeta|_under.txt|alpha.txt|delta.TXT|Gamma.txt"));
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(kRoot));
        // A short path leaves room for the hint that a tap goes up.
        CHECK(d.ClientRect(kFileSelectPathLine).right < d.ClientRect().right / 2);
        CHECK_EQ(d.Text(kFileSelectTypeField), std::wstring(L"All Files(*.*)"));
        CHECK_EQ(d.Text(), std::wstring(L"Load File"));
        CHECK(!d.Item(kFileSelectNameEdit));  // the name box is for saving only
        CHECK_EQ(d.FocusId(), (int)kFileSelectList);
        CHECK_EQ(d.SoftKeyCommand(ui::Left), IDC_FILE_SELECT_ACCEPT);
        CHECK_EQ(d.SoftKeyCommand(ui::Right), IDCANCEL);
        d.SoftKey(ui::Right);
    });
    CHECK_EQ(RUN(s, req), 0);
    CHECK_EQ(req.path.c_str(), L"");
}

TEST_CASE(Ui_FileDlg_ZetaFolderBeforeAlphaFile) {
    ScratchTree tree({L"alpha", L"Zeta\\"});
    FileSelectRequest req = Request(FileSelectSave, tree / L"");
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(Join(Rows(d)), std::wstring(L"Zeta|alpha"));
        d.SoftKey(ui::Right);
    });
    RUN(s, req);
}

TEST_CASE(Ui_FileDlg_ExtensionFiltersFiles) {
    ScratchTree tree({L"a.csv", L"b.CSV", L"c.txt", L"d.csvx", L"e.csv.bak", L"sub.csv\\"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"", L".CSV");
    req.filterText = L"CSV File";
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        // A folder whose name looks like a match is still a folder, listed first.
        CHECK_EQ(Join(Rows(d)), std::wstring(L"sub.csv|a.csv|b.CSV"));
        CHECK_EQ(d.Text(kFileSelectTypeField), std::wstring(L"CSV File"));
        d.SoftKey(ui::Right);
    });
    RUN(s, req);
}

TEST_CASE(Ui_FileDlg_FolderModeListsFoldersInFileSystemOrder) {
    ScratchTree tree({L"m\\", L"B\\", L"x.txt", L"a\\", L"Z\\", L"c.zvl"});
    std::vector<std::wstring> expected;  // the order the file system gives
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((tree / L"*").c_str(), &found);
    do {
        std::wstring name = found.cFileName;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && name != L"." && name != L"..")
            expected.push_back(name);
    } while (FindNextFileW(find, &found));
    FindClose(find);

    FileSelectRequest req = Request(FileSelectFolder, tree / L"");
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(Join(Rows(d)), Join(expected));
        CHECK_EQ(d.Text(), std::wstring(L"Select Folder"));
        CHECK(!d.Item(kFileSelectTypeField));
        ArrowTo(d, L"m");
    });
    s.Step([](ui::Dlg& d) { d.Enter(); });  // walks into m
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kFileSelectList), 0);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"m\\").c_str());
}

TEST_CASE(Ui_FileDlg_WalkDownWithEnterAndUpWithBackOrTap) {
    ScratchTree tree({L"one\\", L"one\\two\\", L"one\\two\\deep.txt", L"top.txt"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Enter(); });  // row 0 is the folder "one"
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        CHECK_EQ(Join(Rows(d)), std::wstring(L"two"));
        CHECK_EQ(d.ListSelectionMark(kFileSelectList), 0);
        d.Enter();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\two\\");
        CHECK_EQ(Join(Rows(d)), std::wstring(L"deep.txt"));
        d.Enter();  // a file does nothing on activation
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\two\\");
        d.Back();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        CHECK_EQ(d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)), std::wstring(L"two"));
        // A tap lands on the dialog: the path line lets clicks through.
        RECT r;
        GetWindowRect(d.Item(kFileSelectPathLine), &r);
        MapWindowPoints(nullptr, d.hwnd, (POINT*)&r, 2);
        d.Tap(d.hwnd, r.left + 1, r.bottom - 1);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        CHECK_EQ(Join(Rows(d)), std::wstring(L"one|top.txt"));
        CHECK_EQ(d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)), std::wstring(L"one"));
        d.TapCell(kFileSelectList, 0, 0);  // one tap opens a folder
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"one\\");
        d.SoftKey(ui::Right);
    });
    CHECK_EQ(RUN(s, req), 0);
}

TEST_CASE(Ui_FileDlg_UpAtRootStaysAtRoot) {
    OnDriveC drive;
    FileSelectRequest req = Request(FileSelectFolder, L"\\");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(L"\\"));
        CHECK(d.ListCount(kFileSelectList) > 0);  // C:\ holds folders
        // Nothing above the root: no hint, the path has the whole line.
        CHECK_EQ(d.ClientRect(kFileSelectPathLine).right, d.ClientRect().right - 2 * ScaleX(2));
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(L"\\"));
        RECT r = d.ClientRect(kFileSelectPathLine);
        d.Tap(kFileSelectPathLine, 1, r.bottom / 2);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), std::wstring(L"\\"));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), L"\\");
}

TEST_CASE(Ui_FileDlg_SaveRefusesEmptyAndIllegalNames) {
    ScratchTree tree({L"old.CSV"});
    FileSelectRequest req = Request(FileSelectSave, tree / L"", L".CSV");
    req.title = L"File Select";
    req.filterText = L"CSV File";
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(), std::wstring(L"File Select"));
        CHECK_EQ(d.FocusId(), (int)kFileSelectNameEdit);
        d.SoftKey(ui::Left);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        d.Type(L"a:b");
        d.SoftKey(ui::Left);
    });
    s.Step([](ui::Dlg&) { CHECK_EQ(ui::MessageBoxes().size(), 2u); });
    for (const wchar_t* bad : {L"x/y", L"*", L"q?", L"\"", L"<", L">", L"p|q"}) {
        s.Step([bad](ui::Dlg& d) {
            SetWindowTextW(d.Item(kFileSelectNameEdit), bad);
            d.Command(IDC_FILE_SELECT_ACCEPT);
        });
    }
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 9u);
        SetWindowTextW(d.Item(kFileSelectNameEdit), L"");
        d.Type(L"report");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"report.CSV").c_str());
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 9u);
    if (boxes.size() < 2) return;
    CHECK_EQ(boxes[0].text, std::wstring(L"File name value is missing"));
    CHECK_EQ(boxes[0].caption, std::wstring(L"File Name Error"));
    CHECK_EQ(boxes[0].icon, (UINT)MB_ICONHAND);
    CHECK_EQ(boxes[0].buttons, (UINT)MB_OK);
    for (size_t i = 1; i < boxes.size(); ++i) {
        CHECK_EQ(boxes[i].text, std::wstring(L"File name include illegal characters"));
        CHECK_EQ(boxes[i].caption, std::wstring(L"File Name Error"));
        CHECK_EQ(boxes[i].icon, (UINT)MB_ICONHAND);
    }
}

TEST_CASE(Ui_FileDlg_SaveAppendsExtensionInFolderWalkedTo) {
    ScratchTree tree({L"exports\\", L"exports\\a.CSV"});
    FileSelectRequest req = Request(FileSelectSave, tree / L"", L".CSV");
    req.fileName = L"Groceries";
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectNameEdit), std::wstring(L"Groceries"));
        d.Key(VK_DOWN);  // from the name box into the list
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)kFileSelectList);
        d.Enter();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(Join(Rows(d)), std::wstring(L"a.CSV"));
        d.Key(VK_UP);  // back up into the name box
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)kFileSelectNameEdit);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"exports\\Groceries.CSV").c_str());
    CHECK_EQ(g_fileSelectLastFolder.c_str(), (tree / L"exports\\").c_str());
    CHECK_EQ(ui::MessageBoxes().size(), 0u);
}

TEST_CASE(Ui_FileDlg_LoadAcceptsFilesOnly) {
    ScratchTree tree({L"sub\\", L"sub\\inner.txt", L"list.txt"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)), std::wstring(L"sub"));
        d.SoftKey(ui::Left);  // a folder is not a choice
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(IsWindow(d.hwnd));
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        ArrowTo(d, L"list.txt");
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"list.txt").c_str());
    CHECK_EQ(ui::MessageBoxes().size(), 0u);
}

TEST_CASE(Ui_FileDlg_LastFolderCarriesToTheNextDialog) {
    ScratchTree tree({L"keep\\", L"keep\\k.txt", L"other\\"});
    FileSelectRequest first = Request(FileSelectFolder, tree / L"keep");  // no trailing "\"
    ui::Script s1;
    s1.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RUN(s1, first), 1);
    CHECK_EQ(first.path.c_str(), (tree / L"keep\\").c_str());

    // A cancelled dialog leaves the last folder alone.
    FileSelectRequest second = Request(FileSelectLoad, tree / L"other\\");
    ui::Script s2;
    s2.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
    CHECK_EQ(RUN(s2, second), 0);

    FileSelectRequest third = Request(FileSelectLoad, L"");
    ui::Script s3;
    s3.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"keep\\");
        CHECK_EQ(Join(Rows(d)), std::wstring(L"k.txt"));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s3, third), 1);
    CHECK_EQ(third.path.c_str(), (tree / L"keep\\k.txt").c_str());

    // A remembered folder that is gone gives way to its nearest parent.
    g_fileSelectLastFolder = (tree / L"gone\\deeper\\").c_str();
    FileSelectRequest fourth = Request(FileSelectFolder, L"");
    ui::Script s4;
    s4.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        d.SoftKey(ui::Right);
    });
    RUN(s4, fourth);
}

TEST_CASE(Ui_FileDlg_ClassInterfaceCopiesIntoCallersBuffer) {
    ScratchTree tree({L"a.txt"});
    FileSelectDialog dlg(GetModuleHandleW(nullptr), nullptr, FileSelectLoad, IDM_FILE_SELECT_MENUBAR, 0, 0);
    dlg.module = hLangModule;
    dlg.currentFolder = (tree / L"").c_str();
    wchar_t out[MAX_PATH] = L"untouched";
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(ui::RunModal(s, [&] { return (INT_PTR)dlg.Run(out, MAX_PATH); }), 1);
    CHECK_EQ((const wchar_t*)out, (tree / L"a.txt").c_str());

    wchar_t small[6] = L"";
    ui::Script s2;
    s2.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(ui::RunModal(s2, [&] { return (INT_PTR)dlg.Run(small, 6); }), 1);
    CHECK_EQ((const wchar_t*)small, std::wstring(L"\\zvte").c_str());
}

namespace {
// Every control inside the client area, rows top to bottom without overlap.
void CheckLayout(ui::Dlg& d, const char* file, int line) {
    RECT client = d.ClientRect();
    CHECK_EQ_AT(client.right, ScaleX(240), file, line);
    auto place = [&](int id) {
        RECT r;
        GetWindowRect(d.Item(id), &r);
        MapWindowPoints(nullptr, d.hwnd, (POINT*)&r, 2);
        return r;
    };
    RECT edit = place(kFileSelectNameEdit), type = place(kFileSelectTypeField);
    RECT path = place(kFileSelectPathLine), list = place(kFileSelectList);
    CHECK_EQ_AT(edit.top, ScaleY(2), file, line);
    CHECK_EQ_AT(edit.left, ScaleX(2) + ScaleX(50), file, line);
    CHECK_EQ_AT(edit.right, client.right - ScaleX(2), file, line);
    CHECK_EQ_AT(type.top, ScaleY(2) + ScaleY(24), file, line);
    CHECK_AT(path.top >= type.bottom, file, line);
    CHECK_EQ_AT(list.top, ScaleY(2) + 3 * ScaleY(24), file, line);
    CHECK_EQ_AT(list.bottom, client.bottom - ScaleY(2), file, line);
    CHECK_EQ_AT(list.right, client.right - ScaleX(2), file, line);
    RECT listClient = d.ClientRect(kFileSelectList);
    CHECK_EQ_AT((int)SendMessageW(d.Item(kFileSelectList), LVM_GETCOLUMNWIDTH, 0, 0), (int)listClient.right, file,
                line);
}

// Holds a screen density for the life of a test and restores the old one.
class Density {
public:
    explicit Density(int dpi) : m_x(ScreenDpiX()), m_y(ScreenDpiY()) { SetScreenDensity(dpi, dpi); }
    ~Density() { SetScreenDensity(m_x, m_y); }

private:
    int m_x, m_y;
};

// With ZV_SHOT_PAUSE=<ms> set, a layout test holds the dialog on screen for
// a screenshot.
void PauseForScreenshot() {
    wchar_t ms[16];
    if (!GetEnvironmentVariableW(L"ZV_SHOT_PAUSE", ms, 16)) return;
    DWORD until = GetTickCount() + _wtoi(ms);
    while (GetTickCount() < until) {
        ui::Pump();
        Sleep(20);
    }
}
}  // namespace

TEST_CASE(Ui_FileDlg_LayoutAt96And192Dpi) {
    ScratchTree tree({L"Categories\\", L"Business\\", L"Personal\\", L"Groceries.CSV", L"Packing list.CSV",
                      L"Travel - business flights.CSV"});
    for (int dpi : {96, 192}) {
        Density density(dpi);
        FileSelectRequest req = Request(FileSelectSave, tree / L"", L".CSV");
        req.title = L"File Select";
        req.filterText = L"CSV File";
        req.fileName = L"Export";
        ui::Script s;
        s.Timeout(60000);
        s.Step([&](ui::Dlg& d) {
            CheckLayout(d, ZV_HERE);
            CHECK(IsWindowVisible(d.MenuBar()));
            RECT bar, client = d.ClientRect();
            GetWindowRect(d.MenuBar(), &bar);
            MapWindowPoints(d.hwnd, nullptr, (POINT*)&client, 2);
            CHECK_EQ(bar.top, client.bottom);  // right under the dialog's area
            ArrowTo(d, L"Groceries.CSV");
        });
        s.Step([](ui::Dlg&) {
            PauseForScreenshot();
        });
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
        RUN(s, req);
    }
}

TEST_CASE(Ui_FileDlg_RowsCarryShellIcons) {
    ScratchTree tree({L"f1\\", L"f2\\", L"a.txt", L"b.TXT", L"c.zvl"});
    FileSelectRequest req = Request(FileSelectLoad, tree / L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        auto image = [&](int row) {
            LVITEMW item = {};
            item.mask = LVIF_IMAGE;
            item.iItem = row;
            SendMessageW(d.Item(kFileSelectList), LVM_GETITEMW, 0, (LPARAM)&item);
            return item.iImage;
        };
        CHECK_EQ(Join(Rows(d)), std::wstring(L"f1|f2|a.txt|b.TXT|c.zvl"));
        for (int row = 0; row < 5; ++row) CHECK(image(row) >= 0);
        CHECK_EQ(image(0), image(1));  // folders alike
        CHECK_EQ(image(2), image(3));  // one extension, whatever its case
        HIMAGELIST images = (HIMAGELIST)SendMessageW(d.Item(kFileSelectList), LVM_GETIMAGELIST, LVSIL_SMALL, 0);
        int cx = 0, cy = 0;
        ImageList_GetIconSize(images, &cx, &cy);
        CHECK_EQ(cx, ScaleX(16));
        d.SoftKey(ui::Right);
    });
    RUN(s, req);
}

TEST_CASE(Ui_FileDlg_EnterInNameBoxSavesEnterInListOpensFolder) {
    ScratchTree tree({L"archive\\", L"old.CSV"});
    FileSelectRequest req = Request(FileSelectSave, tree / L"", L".CSV");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)), std::wstring(L"archive"));
        d.Enter();  // an empty name: refused, nothing opened
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        d.Command(IDOK);  // the action command opens the selected folder
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"archive\\");
        d.Back();  // back up; Back also erases in the name box, which is empty
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.Text(kFileSelectPathLine), tree / L"");
        CHECK_EQ(d.FocusId(), (int)kFileSelectNameEdit);
        d.Type(L"week 12");
        d.Enter();
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.path.c_str(), (tree / L"week 12.CSV").c_str());
    CHECK_EQ(ui::MessageBoxes().size(), 1u);
}
