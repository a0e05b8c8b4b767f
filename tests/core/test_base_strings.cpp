// The two string types and resource strings, by the texts they hold.
#include "base/AppGlobals.h"
#include "base/CeString.h"
#include "base/ResString.h"
#include "base/TextBuffer.h"
#include "tests/framework/ZvTest.h"

// Copies share their text until one of them changes: a change never shows
// in another copy, whichever way the copy was made.
TEST_CASE(Base_CeString_CopiesStayApart) {
    CeString a(L"abc");
    CeString b;
    b = a;
    b = b;
    a = b;
    a.Append(L"");
    CHECK_EQ(a.c_str(), L"abc");
    a.Append(L"de");
    CHECK_EQ(a.c_str(), L"abcde");
    CHECK_EQ(b.c_str(), L"abc");
    CeString c = b + L"!";
    CHECK_EQ(c.c_str(), L"abc!");
    CHECK_EQ(b.c_str(), L"abc");
    CeString d(c);
    d.MakeUnique();
    d.Truncate(1);
    CHECK_EQ(c.c_str(), L"abc!");
    CHECK_EQ(d.c_str(), L"a");
}

TEST_CASE(Base_CeString_EmptyAndTruncate) {
    for (const CeString& empty : {CeString(), CeString(L""), CeString(nullptr, 5), CeString(L"xyz", 0)}) {
        CHECK_EQ(empty.c_str(), L"");
        CHECK_EQ(empty.Length(), 0);
    }
    CeString s(L"abc");
    for (int keep : {3, 4, -1}) {
        s.Truncate(keep);  // at or past the end, or negative: nothing to cut
        CHECK_EQ(s.c_str(), L"abc");
    }
    s.Truncate(2);
    CHECK_EQ(s.c_str(), L"ab");
    s.Truncate(0);
    CHECK_EQ(s.c_str(), L"");
    CeString counted(L"abcdef", 3);
    CHECK_EQ(counted.c_str(), L"abc");
    CHECK_EQ(counted.Length(), 3);
}

TEST_CASE(Base_TextBuffer_GrowsAndKeepsItsText) {
    TextBuffer t;
    t.Init();
    CHECK_EQ(t.Text(), L"");
    std::wstring fiftyNine(59, L'x');
    t.Assign(fiftyNine.c_str());
    t.Append(L"yz");  // past the first block
    CHECK_EQ(t.length, 61);
    CHECK_EQ(std::wstring(t.Text()), fiftyNine + L"yz");
    std::wstring long200(200, L'a');
    t.Assign(long200.c_str());
    CHECK_EQ(std::wstring(t.Text()), long200);
    t.Assign(L"short");
    CHECK_EQ(t.length, 5);
    CHECK_EQ(t.Text(), L"short");
    t.Format(L"%s-%d", L"n", 42);
    CHECK_EQ(t.Text(), L"n-42");
    t.Release();
}

TEST_CASE(Base_LoadResString) {
    ScopedTextBuffer out;
    out.Assign(L"old");
    CHECK_EQ(LoadResString(hLangModule, 7, out), 0);  // no such string
    CHECK_EQ(out.Text(), L"");
    int n = LoadResString(hLangModule, 8068, out);
    CHECK(n > 0);
    CHECK_EQ((int)out.length, n);
    CHECK_EQ(ResText(8068), std::wstring(out.Text()));
    CHECK_EQ(ResText(7), std::wstring());
}
