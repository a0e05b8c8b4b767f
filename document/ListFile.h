// Reading and writing list (.zvl) and template (.zvt) files.
//
// Layout (all integers 32-bit little-endian, text UTF-16LE with its NUL, no
// padding anywhere):
//   list header      "1.7\0" (8 bytes), field count F, item count N
//   template header  "1.7\0", F (12 bytes, no item count)
//   chunks           {u32 payload size, u32 tag, payload}
//     1007 icon (width, height) + four plane chunks (red, green, blue, alpha)
//     1010 view state (sort column, descending flag)
//     4321 start of a field; fields end with 1234
//     field: 1001 width, 1004 name, 1002 type, 1009 default choice (choice
//            types), 1003 default text (all but Priority/Check/Selection),
//            1005 date mode, 1006 time mode, 1234
//     item:  optional 120 back colour, then F value chunks tagged with their
//            stored type: SYSTEMTIME, 4-byte choice or text with NUL
//
// Files are read with one ReadFile into memory and parsed there. They are
// written through writeFileSafely (document/SafeWrite.h): a temporary file
// beside the target, flushed, then renamed over it, so a failed or killed
// write never leaves a partial list.
//
// Damaged files: payloads longer than a member are cut to its capacity and
// the rest skipped; unknown chunks are skipped by their size. A file is
// whole only when every promised field and item is there with every chunk
// inside the file; otherwise it is Damaged (nothing loaded: the header or
// the fields are cut) or PartlyRead (the items before the damage are
// loaded). Item memory is charged against ten times the file's size (plus
// a fixed allowance) before it is taken; beyond it the file is TooLarge.
#pragma once
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/CeString.h"
#include "document/DocMessages.h"
#include "document/ListDocument.h"
#include "document/ValueText.h"

// The version text every list and template starts with.
constexpr wchar_t kFileVersion[] = L"1.7";
constexpr int kListHeaderSize = 16;
constexpr int kTemplateHeaderSize = 12;

// Chunk tags.
enum ChunkTag : uint32_t {
    kTagBackColor = 120,
    kTagColumnWidth = 1001,
    kTagFieldType = 1002,
    kTagDefaultText = 1003,
    kTagFieldName = 1004,
    kTagDateMode = 1005,
    kTagTimeMode = 1006,
    kTagIcon = 1007,
    kTagIconPlane = 1008,
    kTagDefaultChoice = 1009,
    kTagViewState = 1010,
    kTagFieldEnd = 1234,
    kTagFieldStart = 4321,
};

// The 8-byte view state chunk: sort column (-1 unsorted), descending flag.
struct ViewState {
    int32_t sortColumn = -1;
    int32_t sortDescending = 0;
};

// How much of a list was read: the header's promise and what was kept.
struct ListReadReport {
    uint32_t itemsPromised = 0;
    uint32_t itemsRead = 0;
};

// The template editor's working set: up to 50 field records and a count.
struct TemplateFieldList {
    FieldDef fields[kMaxFields];
    int count = 0;

    // Appends a copy; false when the list already holds 50 fields.
    bool Add(const FieldDef& field);
    // Removes field `index` and closes the gap; nothing for a bad index.
    void Remove(int index);
    // Exchanges two fields; false (nothing done) when either index is bad.
    bool Swap(int a, int b);
    void Clear() { count = 0; }
};

enum class FileStatus {
    Ok,
    CannotOpen,     // the file exists but could not be opened or read
    BadVersion,     // the version text is another release's ("1.6")
    BadFieldCount,  // the header's field count is negative or above 50
    CannotCreate,   // the file could not be written (the message says why)
    WriteFailed,    // kept for callers of the old writer; no longer returned
    Missing,        // there is no such file
    Empty,          // the file holds no bytes
    Damaged,        // cut or corrupt before the items: nothing is loaded
    PartlyRead,     // items are cut or corrupt: the whole ones are loaded
    TooLarge,       // above 256 MB, or would take more memory than allowed
};

// ---- in-memory byte reading and writing --------------------------------

// Reads little-endian values from a byte range; reads past the end give
// zeros and leave the position at the end (a short read is not an error).
struct ByteReader {
    const unsigned char* data = nullptr;
    size_t size = 0;
    size_t pos = 0;

    ByteReader() = default;
    ByteReader(const void* bytes, size_t count) : data((const unsigned char*)bytes), size(count) {}
    bool overrun = false;  // something asked for ran past the end

    size_t Remaining() const { return size - pos; }
    bool AtEnd() const { return pos >= size; }
    bool Overrun() const { return overrun; }
    uint32_t U32();
    int32_t I32() { return (int32_t)U32(); }
    // Copies up to `count` bytes into `out` (zero-fills what is missing);
    // returns the bytes actually copied.
    size_t Bytes(void* out, size_t count);
    void Skip(size_t count) {
        if (count > Remaining()) overrun = true;
        pos += count < Remaining() ? count : Remaining();
    }
    // Reads an 8-byte chunk header; false (and the position at the end) when
    // fewer than 8 bytes are left.
    bool ChunkHeader(uint32_t& chunkSize, uint32_t& tag);
};

// Builds a byte image of a file.
struct ByteWriter {
    std::vector<unsigned char> bytes;

    void U32(uint32_t v);
    void I32(int32_t v) { U32((uint32_t)v); }
    void Raw(const void* data, size_t count);
    void ChunkHeader(uint32_t size, uint32_t tag) { U32(size); U32(tag); }
    void U32Chunk(uint32_t tag, uint32_t value) { ChunkHeader(4, tag); U32(value); }
    // A text chunk: (length + 1) * 2 bytes, the text and its NUL.
    void TextChunk(uint32_t tag, const wchar_t* text);
    void TextChunk(uint32_t tag, const wchar_t* text, size_t length);
};

// ---- shared reader and writer of the list-wide chunks and fields -------

// Reads the list-wide chunks (icon, view state) up to the first 4321 chunk,
// then `fieldCount` field definitions into `fields` (each record's
// defaultText is cleared first; members without a chunk keep their value).
// The icon is replaced when the file holds one. Stops cleanly at the end of
// the data.
void readHeaderChunks(ByteReader& in, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view);

// Writes the icon chunks (when the icon has planes), the 1010 view state and
// the field definitions. The two forms write identical bytes.
void writeHeaderChunks(ByteWriter& out, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                       const ViewState& view);
void writeHeaderChunks(ByteWriter& out, const TemplateFieldList& list, const PlanarImage& icon, const ViewState& view);

// ---- whole lists ------------------------------------------------------

// The result of reading or writing a whole list: the status and, when the
// file was refused or not written, the message for the user.
using ListFileResult = DocResult<FileStatus>;

struct ReadListOptions {
    bool makeBackup = true;  // copy the file to its "BAK" name after the version check
};

// Opens a list file and reads it into `doc` (replacing its contents). The
// path is normalised (doubled backslashes collapsed) and kept in doc.path.
// Every status but Ok comes with its message (caption 8068, exclamation):
// Missing, CannotOpen, Empty, Damaged/BadFieldCount, TooLarge each their
// own, BadVersion 8096; `doc` is left empty. PartlyRead loads the whole
// items and says how many of how many ("N of M") could be read. The backup
// is made only of a file read whole, from the bytes that were checked, so
// a damaged file never replaces a good backup. Display texts are built with
// listTextLayout().
ListFileResult readListFile(const wchar_t* path, ListDocument& doc, const ReadListOptions& options = ReadListOptions(),
                            ListReadReport* report = nullptr);
// Parses the bytes of a whole list file (no backup, no message).
FileStatus parseListBytes(const void* bytes, size_t size, ListDocument& doc, const TextLayout* layout = nullptr,
                          ListReadReport* report = nullptr);
// The message readListFile gives with `status` (empty for Ok).
DocMessage listReadMessage(FileStatus status, const ListReadReport& report = ListReadReport());
// A reference reader for measurements: the same result as readListFile but
// with one ReadFile call per chunk header and per payload, the way the
// format was first read on the device. No backup, no message.
FileStatus readListFileUnbuffered(const wchar_t* path, ListDocument& doc);

struct WriteListOptions {
    // Choose each value's chunk by its field's type instead of its stored
    // type (text import).
    bool chunkByFieldType = false;
};

// The bytes of a list file for `doc`: header "1.7", F, N; icon; view state
// from doc.sortColumn/sortDescending; fields with their columnWidth as it
// is; items in their current order.
void buildListBytes(const ListDocument& doc, ByteWriter& out, bool chunkByFieldType = false);
// Writes a list file safely (writeFileSafely). The caller stores current
// column widths in the fields first. A file not written comes back as
// CannotCreate with message 8093/8068 (exclamation) and the cause; the file
// on the disk is then unchanged.
ListFileResult writeListFile(const wchar_t* path, const ListDocument& doc,
                         const WriteListOptions& options = WriteListOptions());
// Writes bytes already built (a list made from a template) the same way:
// the old file stays until the new one is complete.
ListFileResult writeListBytes(const wchar_t* path, const ByteWriter& bytes);

// ---- templates ---------------------------------------------------------

// Reads a template file: 12-byte header, icon, view state and fields.
// Statuses as readListFile's; PartlyRead keeps the fields read whole (in
// list.count). `message`, when given, receives what to tell the user:
// 8102 missing, 8100 another version, the damage texts otherwise.
FileStatus readTemplateFile(const wchar_t* path, TemplateFieldList& list, PlanarImage& icon,
                            ViewState* view = nullptr, DocMessage* message = nullptr);
// Writes a template file safely: 12-byte header, icon, view state -1/0,
// fields. On failure CannotCreate, the file unchanged, and `message` (when
// given) 8085/8068 with the cause.
FileStatus writeTemplateFile(const wchar_t* path, const TemplateFieldList& list, const PlanarImage& icon,
                             DocMessage* message = nullptr);
FileStatus writeTemplateFile(const wchar_t* path, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                             DocMessage* message = nullptr);

// The bytes of an empty list made from a template: 16-byte header (N = 0)
// and the template's chunks. Fails as readTemplateFile (only Ok is usable;
// a PartlyRead template is refused as Damaged).
FileStatus buildListFromTemplate(const wchar_t* templatePath, ByteWriter& out, DocMessage* message = nullptr);
// The new-list dialog's creation of an empty list from a template: the
// template is read and checked first, and the list written safely, so a
// template that fails leaves an existing list as it was (and makes no
// file). CannotCreate: the list could not be written (`message` 8101 with
// the cause); the template's statuses otherwise (`message` as
// readTemplateFile's).
FileStatus makeListFromTemplate(const wchar_t* templatePath, const wchar_t* listPath, DocMessage* message = nullptr);

// ---- paths ---------------------------------------------------------------

// Every run of backslashes collapses to one ("\\a\\\\b" -> "\a\b").
CeString normalizePath(const wchar_t* path);
// The path with its last three characters replaced by "BAK".
CeString backupPathOf(const wchar_t* path);
