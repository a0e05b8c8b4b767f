// The reference reader: the same parse as readListFile, but each chunk header
// and each payload is one ReadFile call on the open handle, as the format was
// first read on the device. Kept for measurements and as a cross-check of
// the buffered reader.
#include "document/ListFile.h"
#include "document/ListFileIo.h"
#include "document/ListParse.h"

namespace {
struct HandleSource {
    HANDLE file;
    long long size;
    long long pos;
    bool overrun = false;

    bool Overrun() const { return overrun; }
    size_t Remaining() const { return pos < size ? size_t(size - pos) : 0; }
    bool AtEnd() const { return pos >= size; }
    size_t Bytes(void* out, size_t count) {
        size_t take = count < Remaining() ? count : Remaining();
        DWORD got = 0;
        if (take && !ReadFile(file, out, (DWORD)take, &got, nullptr)) got = 0;
        if (got < count) {
            std::memset((unsigned char*)out + got, 0, count - got);
            overrun = true;
        }
        pos += got;
        if (got < take) pos = size;  // a failed read ends the data
        return got;
    }
    void Skip(size_t count) {
        if (count > Remaining()) overrun = true;
        size_t step = count < Remaining() ? count : Remaining();
        LARGE_INTEGER d;
        d.QuadPart = (long long)step;
        SetFilePointerEx(file, d, nullptr, FILE_CURRENT);
        pos += (long long)step;
    }
    bool ChunkHeader(uint32_t& chunkSize, uint32_t& tag) {
        if (Remaining() < 8) {
            if (Remaining() > 0) overrun = true;
            Skip(Remaining());
            return false;
        }
        uint32_t header[2];
        if (Bytes(header, 8) < 8) return false;
        chunkSize = header[0];
        tag = header[1];
        return true;
    }
};
}  // namespace

FileStatus readListFileUnbuffered(const wchar_t* path, ListDocument& doc) {
    doc.Clear();
    CeString normal = normalizePath(path);
    FileHandle file(CreateFileW(normal.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid()) return FileStatus::CannotOpen;
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size)) return FileStatus::CannotOpen;
    HandleSource in{file.Get(), size.QuadPart, 0};
    unsigned char header[kListHeaderSize];
    size_t got = in.Bytes(header, sizeof header);
    FileStatus version = listparse::CheckVersion(header, got);
    if (version != FileStatus::Ok) return version;
    if (got < sizeof header) return FileStatus::Damaged;
    int32_t fieldCount;
    uint32_t itemCount;
    std::memcpy(&fieldCount, header + 8, 4);
    std::memcpy(&itemCount, header + 12, 4);
    if (fieldCount < 0 || fieldCount > kMaxFields) return FileStatus::BadFieldCount;
    doc.path = normal;
    doc.fields.assign(size_t(fieldCount), FieldDef());
    ViewState view;
    int fieldsRead = listparse::ReadHeaderChunks(in, doc.fields.data(), fieldCount, doc.icon, view);
    if (fieldsRead != fieldCount || in.Overrun()) {
        doc.Clear();
        return FileStatus::Damaged;
    }
    listparse::ItemsRead items =
        listparse::ReadItems(in, doc, itemCount, listTextLayout(), listparse::ItemMemoryBudget(size_t(size.QuadPart)));
    doc.sortColumn = view.sortColumn;
    doc.sortDescending = view.sortDescending != 0;
    if (items.tooLarge) {
        doc.Clear();
        return FileStatus::TooLarge;
    }
    return items.whole ? FileStatus::Ok : FileStatus::PartlyRead;
}
