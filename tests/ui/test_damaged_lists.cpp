// The list window and files that go wrong: a save that fails part-way, a
// list that is damaged when it is opened, and the backup through both.
#include <windows.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "base/ResString.h"
#include "document/SafeWrite.h"
#include "listwindow/ListWindowState.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_listwindow_support.h"

using namespace lwtest;

namespace {

constexpr int kList = kListViewControlId;

std::wstring BackupOf(const std::wstring& path) { return path.substr(0, path.size() - 3) + L"BAK"; }

}  // namespace

// The window stays open with its changes; left unsaved, the list and its
// backup are the good list, opened again too.
TEST_CASE(Ui_Damaged_FailedSaveLeaveReopenKeepsTheBackup) {
    const std::vector<unsigned char> good = ListBytes(Grocery());
    std::wstring path = WriteList(L"Shop.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        d.Command(IDM_SORT_BASE + 1);
        setWriteFaultAfter(40);  // the disk fills up part-way through the save
        d.SoftKey(ui::Left);
    });
    s.Step([&](ui::Dlg& d) {
        setWriteFaultAfter(-1);
        CHECK(Column(d, 1) == std::vector<std::wstring>({L"milk", L"Bread", L"apples"}));
        d.Back();
    });
    s.Answer(IDOK).Answer(IDYES);
    CHECK_EQ((int)RunList(s, path, req), 1);
    setWriteFaultAfter(-1);
    const std::wstring error = ResText(IDS_ERROR_CAPTION);
    uitest::CheckBoxes({{ResText(IDS_SAVE_FAILED) + L"\n\n" + ResText(IDS_CAUSE_DISK_FULL), error, MB_ICONEXCLAMATION},
                        {ResText(IDS_LEAVE_UNSAVED_TEXT), ResText(IDS_LEAVE_UNSAVED_CAPTION), MB_YESNO | MB_ICONQUESTION}},
                       ZV_HERE);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(path), good);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);

    // Opened again: the list and its backup are the good list still.
    ui::Script again;
    again.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        d.Back();
    });
    CHECK_EQ((int)RunList(again, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_BYTES(ReadBytes(path), good);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);
}

TEST_CASE(Ui_Damaged_CutListOpensWithWhatCouldBeReadAndAsksBeforeSaving) {
    const std::vector<unsigned char> good = ListBytes(Grocery());
    const std::vector<unsigned char> cut(good.begin(), good.end() - 3);
    std::wstring path = WriteList(L"Shop.zvl", Grocery());
    WriteBytes(BackupOf(path), good);
    WriteBytes(path, cut);
    std::wstring partly = ResText(IDS_LIST_PARTLY_READ);
    partly.replace(partly.find(L"%s"), 2, L"2 of 3");

    // No to the question: nothing is written, the backup stays good.
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 2);
        d.SoftKey(ui::Left);
    });
    s.Step([&](ui::Dlg& d) { d.Back(); });
    s.Answer(IDOK).Answer(IDNO);
    CHECK_EQ((int)RunList(s, path, req), 1);
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 2u);
    if (boxes.size() == 2) {
        CHECK_EQ(boxes[0].text, partly);
        CHECK_EQ(boxes[1].text, ResText(IDS_SAVE_DAMAGED_TEXT));
    }
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(path), cut);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);

    // Yes: the list is saved whole with the items that could be read.
    ui::Script yes;
    yes.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    yes.Answer(IDOK).Answer(IDYES);
    CHECK_EQ((int)RunList(yes, path, req), 1);
    CHECK_EQ((int)req.saved, 1);
    ListContent two = Grocery();
    two.items.pop_back();
    CHECK_BYTES(ReadBytes(path), ListBytes(two));
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);
}
