// A small test framework: test cases register themselves, checks report the
// caller's file and line, and one main runs every case (or those whose name
// starts with a prefix given on the command line).
#pragma once
#include <cstdio>
#include <string>
#include <vector>

namespace zvtest {

struct Case {
    const char* name;
    void (*fn)();
};
std::vector<Case>& Registry();

struct Registrar {
    Registrar(const char* name, void (*fn)()) { Registry().push_back({name, fn}); }
};

// Each failed check is counted against the running case and printed.
void Fail(const char* file, int line, const std::string& what);
std::string Show(const std::wstring& s);
std::string Show(const std::string& s);
std::string Show(const wchar_t* s);
std::string Show(const char* s);
std::string Show(long long v);
std::string Show(unsigned long long v);
std::string Show(double v);
inline std::string Show(int v) { return Show((long long)v); }
inline std::string Show(long v) { return Show((long long)v); }
inline std::string Show(unsigned v) { return Show((unsigned long long)v); }
inline std::string Show(unsigned long v) { return Show((unsigned long long)v); }
inline std::string Show(unsigned short v) { return Show((unsigned long long)v); }
inline std::string Show(short v) { return Show((long long)v); }
inline std::string Show(bool v) { return v ? "true" : "false"; }

inline void Check(bool ok, const char* expr, const char* file, int line) {
    if (!ok) Fail(file, line, std::string("CHECK(") + expr + ")");
}

template <class A, class B>
void CheckEq(const A& a, const B& b, const char* ea, const char* eb, const char* file, int line) {
    if (!(a == b)) Fail(file, line, std::string(ea) + " == " + eb + "\n    left:  " + Show(a) + "\n    right: " + Show(b));
}
inline void CheckEq(const wchar_t* a, const wchar_t* b, const char* ea, const char* eb, const char* file, int line) {
    CheckEq(std::wstring(a ? a : L"(null)"), std::wstring(b ? b : L"(null)"), ea, eb, file, line);
}
inline void CheckEq(wchar_t* a, const wchar_t* b, const char* ea, const char* eb, const char* file, int line) {
    CheckEq((const wchar_t*)a, b, ea, eb, file, line);
}
// Byte-for-byte comparison that names the first differing offset.
void CheckBytes(const std::vector<unsigned char>& got, const std::vector<unsigned char>& want, const char* file, int line);

}  // namespace zvtest

#define TEST_CASE(name)                                                        \
    static void name();                                                        \
    static zvtest::Registrar zvRegistrar_##name(#name, name);                  \
    static void name()

#define CHECK(cond) zvtest::Check(!!(cond), #cond, __FILE__, __LINE__)
#define CHECK_EQ(a, b) zvtest::CheckEq((a), (b), #a, #b, __FILE__, __LINE__)
#define CHECK_BYTES(got, want) zvtest::CheckBytes((got), (want), __FILE__, __LINE__)
// For helpers that check on behalf of a caller: pass ZV_HERE down and use the _AT forms.
#define ZV_HERE __FILE__, __LINE__
#define CHECK_AT(cond, file, line) zvtest::Check(!!(cond), #cond, file, line)
#define CHECK_EQ_AT(a, b, file, line) zvtest::CheckEq((a), (b), #a, #b, file, line)
