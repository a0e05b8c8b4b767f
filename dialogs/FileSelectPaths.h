// Path and name rules of the file selection dialog, kept apart from the
// window code so that they read (and test) on their own. Folder paths are
// device style: rooted at "\" and carrying one trailing "\".
#pragma once
#include "base/CeString.h"

// The characters a file name may not hold: "/:*?\"<>|".
extern const wchar_t kIllegalFileNameChars[];

// True when `name` holds none of the illegal characters.
bool IsValidFileName(const wchar_t* name);

// The parent of `folder` ("\a\b\" -> "\a\"). The root has no parent and
// stays "\"; so does an empty or unrooted path.
CeString ParentFolder(const wchar_t* folder);

// The last component of `folder` without its trailing "\" ("\a\b\" -> "b"),
// empty for the root.
CeString LastFolderName(const wchar_t* folder);

// `folder` with exactly one trailing "\" ("" becomes "\").
CeString WithTrailingSlash(const wchar_t* folder);

// True when `name` ends with `extension` (ignoring case). An extension
// holding a wildcard matches every name.
bool NameHasExtension(const wchar_t* name, const wchar_t* extension);
bool ExtensionHasWildcard(const wchar_t* extension);
