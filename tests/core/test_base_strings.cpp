// The two string types and resource strings.
#include "base/AppGlobals.h"
#include "base/CeString.h"
#include "base/ResString.h"
#include "base/TextBuffer.h"
#include "tests/framework/ZvTest.h"

TEST_CASE(Base_CeString_SharingAndCopyOnWrite) {
    CeString a(L"abc");
    CeString b;
    b = a;
    CHECK(a.c_str() == b.c_str());
    CHECK_EQ(a.RefCount(), 2);

    // Assigning to itself or to a string sharing the block changes no count.
    b = b;
    a = b;
    CHECK_EQ(a.RefCount(), 2);

    // Appending "" keeps the block; a real append builds a new one.
    const wchar_t* before = a.c_str();
    a.Append(L"");
    CHECK(a.c_str() == before);
    a.Append(L"de");
    CHECK(a.c_str() != before);
    CHECK_EQ(a.c_str(), L"abcde");
    CHECK_EQ(b.c_str(), L"abc");
    CHECK_EQ(b.RefCount(), 1);

    CeString c = b + L"!";
    CHECK_EQ(c.c_str(), L"abc!");
    CHECK_EQ(b.RefCount(), 1);
}

TEST_CASE(Base_CeString_EmptyAndTruncate) {
    CeString empty1, empty2(L""), empty3(nullptr, 5), empty4(L"xyz", 0);
    CHECK(empty1.c_str() == empty2.c_str());
    CHECK(empty1.c_str() == empty3.c_str());
    CHECK(empty1.c_str() == empty4.c_str());
    CHECK_EQ(empty1.RefCount(), 0);
    CeString copy(empty1);
    CHECK_EQ(empty1.RefCount(), 0);

    CeString s(L"abc");
    const wchar_t* block = s.c_str();
    s.Truncate(3);
    s.Truncate(4);
    s.Truncate(-1);
    CHECK(s.c_str() == block);
    s.Truncate(2);
    CHECK_EQ(s.c_str(), L"ab");
    s.Truncate(0);
    CHECK(s.c_str() == empty1.c_str());

    CeString counted(L"abcdef", 3);
    CHECK_EQ(counted.c_str(), L"abc");
    CHECK_EQ(counted.Length(), 3);
}

TEST_CASE(Base_CeString_MakeUnique) {
    CeString a(L"shared");
    CeString b(a);
    b.MakeUnique();
    CHECK(a.c_str() != b.c_str());
    CHECK_EQ(a.RefCount(), 1);
    CHECK_EQ(b.RefCount(), 1);
    const wchar_t* alone = b.c_str();
    b.MakeUnique();
    CHECK(b.c_str() == alone);
}

TEST_CASE(Base_TextBuffer_Growth) {
    TextBuffer t;
    t.Init();
    CHECK_EQ(t.capacity, 64);
    CHECK_EQ(t.length, 0);
    CHECK_EQ(t.Text(), L"");

    std::wstring fiftyNine(59, L'x');
    t.Assign(fiftyNine.c_str());
    CHECK_EQ(t.capacity, 64);  // 59 + 4 does not exceed 64
    t.Append(L"yz");           // 59 + 2 + 4 > 64
    CHECK_EQ(t.capacity, 125);
    CHECK_EQ(t.length, 61);
    CHECK_EQ(std::wstring(t.Text()), fiftyNine + L"yz");

    t.Assign(std::wstring(200, L'a').c_str());
    CHECK_EQ(t.capacity, 264);
    t.Assign(L"short");
    CHECK_EQ(t.capacity, 264);
    CHECK_EQ(t.length, 5);

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
