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
// Files are read with one ReadFile into memory and parsed there, and written
// from one buffer with one WriteFile; the bytes are those of the layout.
//
// Damaged files: payloads longer than a member are cut to its capacity and
// the rest skipped; unknown chunks are skipped by their size; a size past
// the end of the file is clipped to it; items stop once the file is
// exhausted, so a header count never drives work or memory beyond the file's
// size. A header field count outside 0..50 is refused (message 8096).
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
    CannotOpen,     // the file could not be opened for reading
    BadVersion,     // the version text is not "1.7" (or the header is short)
    BadFieldCount,  // the header's field count is negative or above 50
    CannotCreate,   // the file could not be created for writing
    WriteFailed,    // WriteFile wrote fewer bytes than asked (disk full)
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
    size_t Remaining() const { return size - pos; }
    bool AtEnd() const { return pos >= size; }
    uint32_t U32();
    int32_t I32() { return (int32_t)U32(); }
    // Copies up to `count` bytes into `out` (zero-fills what is missing);
    // returns the bytes actually copied.
    size_t Bytes(void* out, size_t count);
    void Skip(size_t count) { pos += count < Remaining() ? count : Remaining(); }
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
    // Writes everything to `file` with one WriteFile.
    bool WriteTo(HANDLE file) const;
};

// ---- shared reader and writer of the list-wide chunks and fields -------

// Reads the list-wide chunks (icon, view state) up to the first 4321 chunk,
// then `fieldCount` field definitions into `fields` (each record's
// defaultText is cleared first; members without a chunk keep their value).
// The icon is replaced when the file holds one. Stops cleanly at the end of
// the data.
void readHeaderChunks(ByteReader& in, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view);
// The same from an open file handle positioned after the header: reads the
// rest of the file once. Leaves the file position at its end.
bool readHeaderChunks(HANDLE file, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view);
// Template-editor form: reads `fieldCount` (at most 50) fields into `list`.
bool readHeaderChunks(HANDLE file, TemplateFieldList& list, int fieldCount, PlanarImage& icon, ViewState& view);

// Writes the icon chunks (when the icon has planes), the 1010 view state and
// the field definitions. The two forms write identical bytes.
void writeHeaderChunks(ByteWriter& out, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                       const ViewState& view);
void writeHeaderChunks(ByteWriter& out, const TemplateFieldList& list, const PlanarImage& icon, const ViewState& view);
// The same written straight to an open file with one WriteFile each.
bool writeHeaderChunks(HANDLE file, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                       const ViewState& view);
bool writeHeaderChunks(HANDLE file, const TemplateFieldList& list, const PlanarImage& icon, const ViewState& view);

// ---- whole lists ------------------------------------------------------

// The result of reading or writing a whole list: the status and, when the
// file was refused or not written, the message for the user.
using ListFileResult = DocResult<FileStatus>;

struct ReadListOptions {
    bool makeBackup = true;  // copy the file to its "BAK" name after the version check
};

// Opens a list file and reads it into `doc` (replacing its contents). The
// path is normalised (doubled backslashes collapsed) and kept in doc.path.
// Refuses a file that cannot be opened (or is larger than 256 MB), a
// version other than "1.7" and a field count outside 0..50 with message 8096
// (caption 8068, exclamation), in which case no backup is made and `doc` is
// left empty. Display texts are built with listTextLayout().
ListFileResult readListFile(const wchar_t* path, ListDocument& doc, const ReadListOptions& options = ReadListOptions());
// Parses the bytes of a whole list file (no backup, no message).
FileStatus parseListBytes(const void* bytes, size_t size, ListDocument& doc, const TextLayout* layout = nullptr);
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
// Creates (CREATE_ALWAYS, share write) and writes a list file with one
// WriteFile. The caller stores current column widths in the fields first.
// A file not written comes back with message 8093/8068 (exclamation).
ListFileResult writeListFile(const wchar_t* path, const ListDocument& doc,
                         const WriteListOptions& options = WriteListOptions());

// ---- templates ---------------------------------------------------------

// Reads a template file: 12-byte header, icon, view state and fields. No
// message is shown: the template editor shows 8100, the new-list dialog
// 8102/8100. BadFieldCount when the count is outside 0..50.
FileStatus readTemplateFile(const wchar_t* path, TemplateFieldList& list, PlanarImage& icon,
                            ViewState* view = nullptr);
// Writes a template file: 12-byte header, icon, view state -1/0, fields.
FileStatus writeTemplateFile(const wchar_t* path, const TemplateFieldList& list, const PlanarImage& icon);
FileStatus writeTemplateFile(const wchar_t* path, const FieldDef* fields, int fieldCount, const PlanarImage& icon);

// The new-list dialog's creation of an empty list from a template, in its
// order: the list file is created first (CREATE_ALWAYS), then the template
// opened and checked, then 16-byte header (N = 0) + the template's chunks.
// CannotCreate: list file not created; CannotOpen: template missing (8102;
// the empty list file stays); BadVersion: template refused (8100; the empty
// list file stays). No message is shown here.
FileStatus makeListFromTemplate(const wchar_t* templatePath, const wchar_t* listPath);

// ---- paths ---------------------------------------------------------------

// Every run of backslashes collapses to one ("\\a\\\\b" -> "\a\b").
CeString normalizePath(const wchar_t* path);
// The path with its last three characters replaced by "BAK".
CeString backupPathOf(const wchar_t* path);
