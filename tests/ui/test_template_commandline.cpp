// A template named on the command line, the way a double-click hands it
// over: the template editor opens at once, a field is added with keys alone
// and saved, and the program ends with the editor.
#include <windows.h>

#include <string>
#include <vector>

#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "dialogs/TextEntry.h"
#include "templates/Templates.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/test_templates_support.h"

using namespace tmpltest;

namespace {

const wchar_t kInstall[] = L"\\zvtemplate-install";

// An installation with its modules and one sample template.
std::wstring InstallWithTemplate(const wchar_t* sample) {
    std::wstring install = kInstall;
    uitest::Install(install, install, L"LangEng.dll");
    std::wstring path = install + L"\\Templates\\" + sample;
    CopyFileW((uitest::BinFolder() + L"samples\\qvga\\templates\\" + sample).c_str(), path.c_str(), FALSE);
    return path;
}

uint32_t FieldCountOf(const std::vector<unsigned char>& bytes) {
    return bytes.size() < 12 ? 0 : bytes[8] | bytes[9] << 8 | bytes[10] << 16 | (uint32_t)bytes[11] << 24;
}

}  // namespace

TEST_CASE(Ui_Templates_CommandLineTemplateEditedWithKeysAndSaved) {
    uitest::ModulesScope keep;
    std::wstring path = InstallWithTemplate(L"Shopping.zvt");
    const uint32_t before = FieldCountOf(ReadBytes(path));
    CHECK(before > 0);

    std::wstring commandLine = L"\"" + path + L"\"";
    UnquoteDesktopCommandLine(&commandLine[0]);
    ui::Script s;
    s.WaitFor(L"#32770", L"Edit Template");
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ((uint32_t)d.ListCount(kTemplateFieldListId), before);
        d.SoftKey(ui::Right);
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) { d.Char(L'1'); });  // Add Field
    s.WaitFor(L"#32770", L"Field Edit");
    s.Step([](ui::Dlg& d) { for (int i = 0; i < 3; ++i) d.Key(VK_RIGHT); d.Key(VK_DOWN); });  // Text, to the name
    s.Step([](ui::Dlg& d) { d.Type(L"Note"); d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Edit Template");
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Save
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L"Shopping"));
        d.SoftKey(ui::Left);
    });
    INT_PTR started = ui::RunModal(s, [&] { return (INT_PTR)InitInstance(hInstance, SW_SHOW, &commandLine[0]); });
    CHECK_EQ(started, (INT_PTR)FALSE);  // the main window ended with the editor
    CHECK(FindWindowW(L"ZorvelConsole", L"Zorvel") == nullptr);
    CHECK(ui::MessageBoxes().empty());

    std::vector<unsigned char> after = ReadBytes(path);
    CHECK_EQ(FieldCountOf(after), before + 1);
    // The new field is the last one written: its chunks end the file.
    std::vector<unsigned char> field = ChunkBytes({TField{L"Note", FieldType::Text}}, false).v;
    field.erase(field.begin(), field.begin() + 16);  // without the view state chunk
    CHECK(after.size() > field.size());
    if (after.size() > field.size())
        CHECK_BYTES(std::vector<unsigned char>(after.end() - field.size(), after.end()), field);
}
