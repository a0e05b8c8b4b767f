// zvl: the command-line companion of Zorvel. It reads, describes, exports,
// imports and creates list and template files with the program's own
// document code, so what it writes is byte for byte what the program writes.
#include <windows.h>

#include <string>
#include <vector>

#include "base/AppGlobals.h"
#include "tools/zvl/ZvlCommands.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlEnvironment.h"

namespace {

const wchar_t kUsage[] =
    L"Usage: zvl [--lang MODULE] COMMAND ARGUMENTS\n"
    L"\n"
    L"  zvl info FILE              kind, version, fields, item count, icon size, sort state\n"
    L"  zvl show FILE              the list as its window shows it: column titles, then one\n"
    L"                             line per item, cells separated by TAB (UTF-8)\n"
    L"  zvl show --json FILE       the same as JSON, with each cell's text and typed value\n"
    L"  zvl export LIST OUT [--force]\n"
    L"                             the tab-separated UTF-16 export, as the list window writes it;\n"
    L"                             an existing file is replaced only with --force\n"
    L"  zvl import TEXT FOLDER [--force]\n"
    L"                             FOLDER\\<text file's name>.zvl, as the main window's import\n"
    L"                             writes it; an existing list is replaced only with --force\n"
    L"  zvl new TEMPLATE OUT [--force]\n"
    L"                             an empty list from a template, as the new-list dialog writes it\n"
    L"  zvl make SOURCE OUT [--icon-size 16|32] [--icons FOLDER] [--force]\n"
    L"                             a list or template from a readable source (see docs/zvl.md)\n"
    L"  zvl samples SOURCE OUT     every sample source under SOURCE into OUT\\qvga and OUT\\vga\n"
    L"  zvl --help                 this text\n"
    L"\n"
    L"FILE is a list (.zvl) or a template (.zvt). Paths may be device style\n"
    L"(\\Folder\\x.zvl, on zvl's own drive) or Windows style.\n"
    L"--lang MODULE  the language module for type names, choice texts and messages,\n"
    L"               such as LangEng.dll or LangGer.dll; a module named LangGer or\n"
    L"               LangHeb shows dates with dots. Default: the installed program's\n"
    L"               (SelectedLangResFile), else LangEng.dll beside zvl.exe.\n"
    L"Exit status: 0 done, 1 a file was refused or could not be read or written,\n"
    L"2 wrong usage.\n";

struct CommandLine {
    std::wstring command;
    std::vector<std::wstring> args;
    std::wstring lang;
    std::wstring iconFolder;
    int iconSize = 16;
    bool json = false;
    bool force = false;
    bool help = false;
};

struct CommandForm {
    const wchar_t* name;
    size_t argCount;
    bool json, force, make;  // options the command takes
};
const CommandForm kCommands[] = {
    {L"info", 1, false, false, false},   {L"show", 1, true, false, false},   {L"export", 2, false, true, false},
    {L"import", 2, false, true, false},  {L"new", 2, false, true, false},    {L"make", 2, false, true, true},
    {L"samples", 2, false, false, false},
};

// One line: what is wrong and where the full usage is.
int UsageError(const std::wstring& reason) {
    Err(L"zvl: " + reason + L" (see zvl --help)\n");
    return 2;
}

// Returns an empty string when the command line is well formed, else the reason.
std::wstring Parse(int argc, wchar_t** argv, CommandLine& cl) {
    for (int i = 1; i < argc; ++i) {
        std::wstring a = argv[i];
        auto value = [&](std::wstring& out) {
            if (i + 1 >= argc) return false;
            out = argv[++i];
            return true;
        };
        if (a == L"--help" || a == L"-h" || a == L"/?" || a == L"help") {
            cl.help = true;
        } else if (a == L"--lang") {
            if (!value(cl.lang)) return L"--lang needs a module path";
        } else if (a == L"--json") {
            cl.json = true;
        } else if (a == L"--force") {
            cl.force = true;
        } else if (a == L"--icons") {
            if (!value(cl.iconFolder)) return L"--icons needs a folder";
        } else if (a == L"--icon-size") {
            std::wstring size;
            if (!value(size)) return L"--icon-size needs 16 or 32";
            if (size != L"16" && size != L"32") return L"--icon-size is 16 or 32";
            cl.iconSize = _wtoi(size.c_str());
        } else if (a.size() > 1 && a[0] == L'-' && a[1] == L'-') {
            return L"unknown option " + a;
        } else if (cl.command.empty()) {
            cl.command = a;
        } else {
            cl.args.push_back(a);
        }
    }
    if (cl.help) return std::wstring();
    if (cl.command.empty()) return L"no command given";
    for (const CommandForm& command : kCommands) {
        if (cl.command != command.name) continue;
        if (cl.args.size() != command.argCount)
            return cl.command + L" takes " + std::to_wstring(command.argCount) +
                   (command.argCount == 1 ? L" file" : L" paths");
        if (cl.json && !command.json) return L"--json works with show only";
        if (cl.force && !command.force) return L"--force works with export, import, new and make only";
        if ((!cl.iconFolder.empty() || cl.iconSize != 16) && !command.make)
            return L"--icons and --icon-size work with make only";
        return std::wstring();
    }
    return L"unknown command " + cl.command;
}

int Run(const CommandLine& cl) {
    std::vector<std::wstring> p;
    for (const std::wstring& a : cl.args) p.push_back(ResolvePath(a));
    const std::wstring& c = cl.command;
    if (c == L"info") return RunInfo(p[0]);
    if (c == L"show") return RunShow(p[0], cl.json);
    if (c == L"export") return RunExport(p[0], p[1], cl.force);
    if (c == L"import") return RunImport(p[0], p[1], cl.force);
    if (c == L"new") return RunNew(p[0], p[1], cl.force);
    if (c == L"make")
        return RunMake(p[0], p[1], cl.iconSize, cl.iconFolder.empty() ? std::wstring() : ResolvePath(cl.iconFolder),
                       cl.force);
    return RunSamples(p[0], p[1]);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    hInstance = GetModuleHandleW(nullptr);
    CommandLine cl;
    std::wstring problem = Parse(argc, argv, cl);
    if (cl.help) {
        Out(kUsage);
        return 0;
    }
    if (!problem.empty()) return UsageError(problem);
    if (!LoadLanguageModule(cl.lang)) return 1;
    int status = Run(cl);
    // Output cut short (a full disk, a closed pipe) is a failure, whatever
    // the command made of its files.
    if (unsigned long error = OutputError()) {
        ReportError(L"standard output", L"could not be written: " + SystemErrorText(error));
        return 1;
    }
    return status;
}
