// Shared by the template tests: template and list bytes built from the file
// layout (never by the writer under test), a scratch templates folder, and
// row selection in a list view as the navigation keys leave it.
#pragma once
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "document/ListDocument.h"
#include "tests/core/test_doc_util.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace tmpltest {

struct TField {
    std::wstring name;
    FieldType type;
    std::wstring text = {};
    int choice = 0, dateMode = 0, timeMode = 0, width = 0;
};

// The chunks after the header: an optional 2 x 2 icon, the view state
// (-1, 0) and the fields.
inline doctest::Bytes ChunkBytes(const std::vector<TField>& fields, bool withIcon) {
    doctest::Bytes out;
    if (withIcon) {
        out.chunk(1007, doctest::Bytes().u32(2).u32(2));
        for (int plane = 0; plane < 4; ++plane) {
            doctest::Bytes pixels;
            for (int i = 0; i < 4; ++i) pixels.u8((unsigned)(plane * 60 + i));
            out.chunk(1008, pixels);
        }
    }
    out.viewState(-1, 0);
    for (const TField& f : fields)
        out.append(doctest::FieldChunks(f.name, (int)f.type, f.width, f.text.c_str(), f.choice, f.dateMode, f.timeMode));
    return out;
}

inline std::vector<unsigned char> TemplateBytes(const std::vector<TField>& fields, bool withIcon = false) {
    return doctest::Bytes().templateHeader((int)fields.size()).append(ChunkBytes(fields, withIcon)).v;
}

// An empty list made from those fields: the 16-byte header and the same chunks.
inline std::vector<unsigned char> EmptyListBytes(const std::vector<TField>& fields, bool withIcon = false) {
    return doctest::Bytes().listHeader((int)fields.size(), 0).append(ChunkBytes(fields, withIcon)).v;
}

using doctest::ReadBytes;
inline void Write(const std::wstring& path, const std::vector<unsigned char>& bytes) { doctest::WriteBytes(path, bytes); }
inline bool Exists(const std::wstring& path) { return doctest::FileExists(path); }

// Empties (or makes) a scratch folder under the templates test root.
inline std::wstring ScratchFolder(const std::wstring& name) {
    CreateDirectoryW(L"\\zvtemplatetests\\", nullptr);
    std::wstring folder = L"\\zvtemplatetests\\" + name + L"\\";
    uitest::RemoveTree(folder);
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}
inline std::wstring TemplatesTestFolder() { return ScratchFolder(L"Templates"); }

// Selects and focuses `row` as the arrow keys would.
inline void SelectListRow(ui::Dlg& d, int listId, int row) {
    ListView_SetItemState(d.Item(listId), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetSelectionMark(d.Item(listId), row);
}

// The first column of every row of a list view, top to bottom.
inline std::vector<std::wstring> Rows(ui::Dlg& d, int listId) {
    std::vector<std::wstring> rows;
    for (int i = 0; i < d.ListCount(listId); ++i) rows.push_back(d.ListText(listId, i));
    return rows;
}

// A list box's entries (the spinners' lists): one's text, their count, the selected one.
inline std::wstring ListText(ui::Dlg& d, int id, int at) {
    HWND list = d.Item(id);
    wchar_t text[256] = {};
    if (SendMessageW(list, LB_GETTEXTLEN, at, 0) < 256) SendMessageW(list, LB_GETTEXT, at, (LPARAM)text);
    return text;
}
inline int ListCount(ui::Dlg& d, int id) { return (int)SendMessageW(d.Item(id), LB_GETCOUNT, 0, 0); }
inline int ListSel(ui::Dlg& d, int id) { return (int)SendMessageW(d.Item(id), LB_GETCURSEL, 0, 0); }

// Typing as steps: '>' and '<' turn a spinner, 'v' and '^' move to the next
// or previous control and end the step (keys go to the control focused when
// they are posted), '|' ends a step, '!' is the left soft key, '~' Back, '#'
// Enter; anything else is typed.
inline void Keys(ui::Script& s, const std::wstring& keys) {
    std::wstring step;
    auto flush = [&](wchar_t move) {
        s.Step([step, move](ui::Dlg& d) {
            for (wchar_t c : step) {
                if (c == L'>') d.Key(VK_RIGHT);
                else if (c == L'<') d.Key(VK_LEFT);
                else if (c == L'!') d.SoftKey(ui::Left);
                else if (c == L'~') d.Back();
                else if (c == L'#') d.Enter();
                else d.Char(c);
            }
            if (move != L'|') d.Key(move == L'v' ? VK_DOWN : VK_UP);
        });
        step.clear();
    };
    for (wchar_t c : keys) {
        if (c == L'v' || c == L'^' || c == L'|') flush(c);
        else step += c;
    }
    if (!step.empty()) flush(L'|');
}

}  // namespace tmpltest
