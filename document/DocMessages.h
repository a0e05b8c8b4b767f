// What the document code has to tell the user, as data. Readers, writers,
// export and import return a message with their result instead of showing
// it: the window side shows it as a message box (dialogs/MessageBoxes.h), a
// console program prints it, a test reads it. Texts come from the language
// module.
#pragma once
#include <windows.h>

#include <optional>
#include <string>

struct DocMessage {
    UINT textId = 0;        // 0: nothing to tell
    UINT captionId = 0;
    UINT style = MB_OK;     // icon and buttons of the box
    std::optional<std::wstring> argument;  // fills the text's one "%s" when present
    // Why it happened (a full disk, a read-only file...), a sentence of its
    // own after the text; 0 when the text says all there is.
    UINT causeId = 0;

    bool IsEmpty() const { return textId == 0; }
    // The text with the argument in place and the cause after it, and the
    // caption.
    std::wstring Text() const;
    std::wstring Caption() const;
};

// A result code and the message that goes with it (empty for most
// successes). Compares with its code, so `result == FileStatus::Ok` reads as
// the code alone does.
template <typename Code>
struct DocResult {
    Code code;
    DocMessage message;

    bool operator==(Code other) const { return code == other; }
    bool operator!=(Code other) const { return code != other; }
};
