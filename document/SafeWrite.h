// The one way a user's file is written: never in place.
//
// The new bytes go to a temporary file beside the target, are flushed to
// the disk, and only then replace the target in one rename. A full disk, a
// read-only file, a missing folder or a process killed at any moment leaves
// either the old file or the new one, whole, and no temporary file behind
// (a kill can leave one; it never holds the only copy of anything).
#pragma once
#include <windows.h>

#include <cstddef>

// Why a write failed, in the user's terms.
enum class WriteCause {
    None,
    DiskFull,       // no room left on the disk
    ReadOnly,       // the file or folder is read-only, or in use
    FolderMissing,  // the folder does not exist
    InvalidName,    // not a usable file name (a device name such as "nul")
    Other,
};

struct SafeWriteResult {
    bool ok = false;
    WriteCause cause = WriteCause::None;
    DWORD error = 0;  // the system's code, for logs
};

// Writes `size` bytes to `path` through a flushed temporary file and one
// replacing rename. On failure the target is untouched and the temporary
// file is removed.
SafeWriteResult writeFileSafely(const wchar_t* path, const void* data, size_t size);

// The cause of a system error code.
WriteCause writeCauseOf(DWORD error);
// The language module's sentence for a cause (0 for None).
UINT writeCauseTextId(WriteCause cause);

// True for a name Windows keeps for a device (nul, con, aux, prn, com1-9,
// lpt1-9), with or without an extension: such a "file" holds nothing.
bool isReservedDeviceName(const wchar_t* path);

// Test hook: the next writes fail with a full disk once `bytes` bytes of a
// temporary file have been written (-1 turns the fault off). Lets the tests
// fail every writer part-way without a full volume.
void setWriteFaultAfter(long long bytes);
// Test hook: how many bytes each WriteFile call carries (0: the default).
// Small pieces let a test kill a writer while the temporary file grows.
void setWritePieceSize(size_t bytes);
