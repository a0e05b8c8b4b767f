// The commands of zvl. Each returns the process exit status: 0 done, 1 a file
// was refused or could not be read or written (reported on stderr).
#pragma once
#include <string>

int RunInfo(const std::wstring& path);
int RunShow(const std::wstring& path, bool json);
int RunExport(const std::wstring& listPath, const std::wstring& outPath, bool force);
int RunImport(const std::wstring& textPath, const std::wstring& folder, bool force);
int RunNew(const std::wstring& templatePath, const std::wstring& outPath, bool force);
// Builds a list or template from a readable source (SampleSource.h).
int RunMake(const std::wstring& sourcePath, const std::wstring& outPath, int iconSize, const std::wstring& iconFolder,
            bool force);
// Builds every sample under SOURCE\lists\<Category>\*.txt and
// SOURCE\templates\*.txt into OUT\qvga\... (16-pixel icons) and OUT\vga\...
// (32-pixel icons).
int RunSamples(const std::wstring& sourceFolder, const std::wstring& outFolder);
