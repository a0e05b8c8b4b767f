#include "document/ListFile.h"

#include <cstring>
#include <cwchar>

#include "document/DocStrings.h"
#include "document/ListParse.h"
#include "document/ListFileIo.h"

// ---- ByteReader / ByteWriter -------------------------------------------------

uint32_t ByteReader::U32() {
    uint32_t v = 0;
    Bytes(&v, 4);
    return v;
}

size_t ByteReader::Bytes(void* out, size_t count) {
    size_t take = count < Remaining() ? count : Remaining();
    if (take) std::memcpy(out, data + pos, take);
    if (take < count) std::memset((unsigned char*)out + take, 0, count - take);
    pos += take;
    return take;
}

bool ByteReader::ChunkHeader(uint32_t& chunkSize, uint32_t& tag) {
    if (Remaining() < 8) {
        pos = size;
        return false;
    }
    std::memcpy(&chunkSize, data + pos, 4);
    std::memcpy(&tag, data + pos + 4, 4);
    pos += 8;
    return true;
}

void ByteWriter::U32(uint32_t v) {
    unsigned char b[4] = {(unsigned char)v, (unsigned char)(v >> 8), (unsigned char)(v >> 16), (unsigned char)(v >> 24)};
    Raw(b, 4);
}

void ByteWriter::Raw(const void* data, size_t count) {
    if (!count) return;
    size_t at = bytes.size();
    bytes.resize(at + count);
    std::memcpy(bytes.data() + at, data, count);
}

void ByteWriter::TextChunk(uint32_t tag, const wchar_t* text, size_t length) {
    ChunkHeader(uint32_t((length + 1) * 2), tag);
    Raw(text, length * 2);
    bytes.push_back(0);
    bytes.push_back(0);
}

void ByteWriter::TextChunk(uint32_t tag, const wchar_t* text) { TextChunk(tag, text, text ? wcslen(text) : 0); }

bool ByteWriter::WriteTo(HANDLE file) const { return WriteAll(file, bytes.data(), bytes.size()); }

// ---- template field list -----------------------------------------------------

bool TemplateFieldList::Add(const FieldDef& field) {
    if (count < 0 || count >= kMaxFields) return false;
    fields[count++] = field;
    return true;
}

void TemplateFieldList::Remove(int index) {
    if (index < 0 || index >= count) return;
    for (int i = index; i + 1 < count; ++i) fields[i] = fields[i + 1];
    --count;
}

bool TemplateFieldList::Swap(int a, int b) {
    if (a < 0 || b < 0 || a >= count || b >= count) return false;
    FieldDef t = fields[a];
    fields[a] = fields[b];
    fields[b] = t;
    return true;
}

// ---- list-wide chunks and fields -------------------------------------------------

void readHeaderChunks(ByteReader& in, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view) {
    listparse::ReadHeaderChunks(in, fields, fieldCount, icon, view);
}

bool readHeaderChunks(HANDLE file, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view) {
    std::vector<unsigned char> rest;
    if (!ReadRestOfFile(file, rest)) return false;
    ByteReader in(rest.data(), rest.size());
    listparse::ReadHeaderChunks(in, fields, fieldCount, icon, view);
    return true;
}

bool readHeaderChunks(HANDLE file, TemplateFieldList& list, int fieldCount, PlanarImage& icon, ViewState& view) {
    if (fieldCount < 0 || fieldCount > kMaxFields) return false;
    for (int i = 0; i < fieldCount; ++i) list.fields[i] = FieldDef();
    list.count = fieldCount;
    return readHeaderChunks(file, list.fields, fieldCount, icon, view);
}

// Length of a fixed-capacity member, at most capacity - 1.
static size_t MemberLength(const wchar_t* text) {
    size_t n = 0;
    while (n < size_t(kFieldTextCapacity - 1) && text[n]) ++n;
    return n;
}

static void WriteIcon(ByteWriter& out, const PlanarImage& icon) {
    if (!icon.red || !icon.green || !icon.blue || !icon.alpha || icon.width <= 0 || icon.height <= 0) return;
    uint32_t planeSize = uint32_t(icon.width) * uint32_t(icon.height);
    out.ChunkHeader(8, kTagIcon);
    out.I32(icon.width);
    out.I32(icon.height);
    const unsigned char* planes[4] = {icon.red, icon.green, icon.blue, icon.alpha};
    for (const unsigned char* plane : planes) {
        out.ChunkHeader(planeSize, kTagIconPlane);
        out.Raw(plane, planeSize);
    }
}

static void WriteField(ByteWriter& out, const FieldDef& field) {
    out.ChunkHeader(0, kTagFieldStart);
    out.U32Chunk(kTagColumnWidth, (uint32_t)field.columnWidth);
    out.TextChunk(kTagFieldName, field.name, MemberLength(field.name));
    out.U32Chunk(kTagFieldType, (uint32_t)field.type);
    if (IsChoiceType(field.type)) out.U32Chunk(kTagDefaultChoice, (uint32_t)field.defaultChoice);
    // YesNo keeps its typed default text as well as its choice.
    if (field.type != FieldType::Priority && field.type != FieldType::Check && field.type != FieldType::Selection)
        out.TextChunk(kTagDefaultText, field.defaultText, MemberLength(field.defaultText));
    out.U32Chunk(kTagDateMode, (uint32_t)field.dateDefaultMode);
    out.U32Chunk(kTagTimeMode, (uint32_t)field.timeDefaultMode);
    out.ChunkHeader(0, kTagFieldEnd);
}

void writeHeaderChunks(ByteWriter& out, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                       const ViewState& view) {
    WriteIcon(out, icon);
    out.ChunkHeader(8, kTagViewState);
    out.I32(view.sortColumn);
    out.I32(view.sortDescending);
    for (int i = 0; i < fieldCount; ++i) WriteField(out, fields[i]);
}

void writeHeaderChunks(ByteWriter& out, const TemplateFieldList& list, const PlanarImage& icon, const ViewState& view) {
    int count = list.count < 0 ? 0 : list.count > kMaxFields ? kMaxFields : list.count;
    writeHeaderChunks(out, list.fields, count, icon, view);
}

bool writeHeaderChunks(HANDLE file, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                       const ViewState& view) {
    ByteWriter out;
    writeHeaderChunks(out, fields, fieldCount, icon, view);
    return out.WriteTo(file);
}

bool writeHeaderChunks(HANDLE file, const TemplateFieldList& list, const PlanarImage& icon, const ViewState& view) {
    ByteWriter out;
    writeHeaderChunks(out, list, icon, view);
    return out.WriteTo(file);
}

// ---- whole lists -------------------------------------------------------------

FileStatus parseListBytes(const void* bytes, size_t size, ListDocument& doc, const TextLayout* layout) {
    CeString path = doc.path;
    doc.Clear();
    doc.path = path;
    ByteReader in(bytes, size);
    wchar_t version[4];
    if (in.Bytes(version, sizeof version) < sizeof version || !listparse::IsCurrentVersion(version))
        return FileStatus::BadVersion;
    int32_t fieldCount = in.I32();
    uint32_t itemCount = in.U32();
    if (fieldCount < 0 || fieldCount > kMaxFields) return FileStatus::BadFieldCount;
    doc.fields.assign(size_t(fieldCount), FieldDef());
    ViewState view;
    listparse::ReadHeaderChunks(in, doc.fields.data(), fieldCount, doc.icon, view);
    TextLayout here = layout ? *layout : listTextLayout();
    listparse::ReadItems(in, doc, itemCount, here);
    doc.sortColumn = view.sortColumn;
    doc.sortDescending = view.sortDescending != 0;
    return FileStatus::Ok;
}

// Every refusal of a list tells the user the same thing.
static ListFileResult Refused(FileStatus status) {
    return {status, {docstr::kWrongVersion, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}}};
}

ListFileResult readListFile(const wchar_t* path, ListDocument& doc, const ReadListOptions& options) {
    doc.Clear();
    CeString normal = normalizePath(path);
    std::vector<unsigned char> bytes;
    FileStatus status = ReadWholeFile(normal.c_str(), bytes);
    if (status != FileStatus::Ok) return Refused(status);
    // Version and field count first: a refused file gets no backup.
    ByteReader header(bytes.data(), bytes.size());
    wchar_t version[4];
    if (header.Bytes(version, sizeof version) < sizeof version || !listparse::IsCurrentVersion(version))
        return Refused(FileStatus::BadVersion);
    int32_t fieldCount = header.I32();
    if (fieldCount < 0 || fieldCount > kMaxFields) return Refused(FileStatus::BadFieldCount);
    if (options.makeBackup) CopyFileW(normal.c_str(), backupPathOf(normal.c_str()).c_str(), FALSE);
    doc.path = normal;
    return {parseListBytes(bytes.data(), bytes.size(), doc), {}};
}

void buildListBytes(const ListDocument& doc, ByteWriter& out, bool chunkByFieldType) {
    const int fieldCount = doc.fieldCount();
    // A rough size first, so the buffer grows once or twice, not per chunk.
    out.bytes.reserve(out.bytes.size() + 256 + size_t(fieldCount) * 600 +
                      doc.items.size() * (8 + size_t(fieldCount) * 40));
    out.Raw(L"1.7", 8);
    out.I32(fieldCount);
    out.U32((uint32_t)doc.items.size());
    ViewState view;
    view.sortColumn = doc.sortColumn;
    view.sortDescending = doc.sortDescending ? 1 : 0;
    writeHeaderChunks(out, doc.fields.data(), fieldCount, doc.icon, view);
    const FieldValue empty;
    for (const ListItem& item : doc.items) {
        if (item.backColor != kNoBackColor) out.U32Chunk(kTagBackColor, item.backColor);
        for (int i = 0; i < fieldCount; ++i) {
            const FieldDef& field = doc.fields[size_t(i)];
            bool present = size_t(i) < item.values.size();
            const FieldValue& value = present ? item.values[size_t(i)] : empty;
            FieldType type = (chunkByFieldType || !present) ? field.type : value.storedType;
            switch (type) {
            case FieldType::Date:
            case FieldType::Time:
            case FieldType::DateTime:
                out.ChunkHeader(16, (uint32_t)type);
                out.Raw(&value.time, 16);
                break;
            case FieldType::Priority:
            case FieldType::YesNo:
            case FieldType::Check:
            case FieldType::Selection:
                out.U32Chunk((uint32_t)type, (uint32_t)value.choice);
                break;
            case FieldType::Text:
            case FieldType::Number:
                out.TextChunk((uint32_t)type, value.text.c_str(), size_t(value.text.Length()));
                break;
            default:
                break;  // an unknown stored type writes no chunk
            }
        }
    }
}

ListFileResult writeListFile(const wchar_t* path, const ListDocument& doc, const WriteListOptions& options) {
    ByteWriter out;
    buildListBytes(doc, out, options.chunkByFieldType);
    FileStatus status = WriteWholeFile(path, out, FILE_SHARE_WRITE);
    if (status == FileStatus::Ok) return {status, {}};
    return {status, {docstr::kListNotCreated, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}}};
}

// ---- templates -------------------------------------------------------------------

FileStatus readTemplateFile(const wchar_t* path, TemplateFieldList& list, PlanarImage& icon, ViewState* view) {
    std::vector<unsigned char> bytes;
    FileStatus status = ReadWholeFile(path, bytes);
    if (status != FileStatus::Ok) return status;
    ByteReader in(bytes.data(), bytes.size());
    wchar_t version[4];
    if (in.Bytes(version, sizeof version) < sizeof version || !listparse::IsCurrentVersion(version))
        return FileStatus::BadVersion;
    int32_t fieldCount = in.I32();
    if (fieldCount < 0 || fieldCount > kMaxFields) return FileStatus::BadFieldCount;
    for (int i = 0; i < fieldCount; ++i) list.fields[i] = FieldDef();
    list.count = fieldCount;
    icon.Release();
    ViewState localView;
    listparse::ReadHeaderChunks(in, list.fields, fieldCount, icon, localView);
    if (view) *view = localView;
    return FileStatus::Ok;
}

FileStatus writeTemplateFile(const wchar_t* path, const FieldDef* fields, int fieldCount, const PlanarImage& icon) {
    ByteWriter out;
    out.Raw(L"1.7", 8);
    out.I32(fieldCount);
    writeHeaderChunks(out, fields, fieldCount, icon, ViewState());
    return WriteWholeFile(path, out, 0);
}

FileStatus writeTemplateFile(const wchar_t* path, const TemplateFieldList& list, const PlanarImage& icon) {
    int count = list.count < 0 ? 0 : list.count > kMaxFields ? kMaxFields : list.count;
    return writeTemplateFile(path, list.fields, count, icon);
}

FileStatus makeListFromTemplate(const wchar_t* templatePath, const wchar_t* listPath) {
    CeString normal = normalizePath(listPath);
    FileHandle list(CreateFileW(normal.c_str(), GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!list.IsValid()) return FileStatus::CannotCreate;
    TemplateFieldList fields;
    PlanarImage icon;
    ViewState view;
    FileStatus status = readTemplateFile(templatePath, fields, icon, &view);
    if (status != FileStatus::Ok) return status;
    ByteWriter out;
    out.Raw(L"1.7", 8);
    out.I32(fields.count);
    out.U32(0);
    writeHeaderChunks(out, fields, icon, view);
    return out.WriteTo(list.Get()) ? FileStatus::Ok : FileStatus::WriteFailed;
}

// ---- paths -----------------------------------------------------------------------

CeString normalizePath(const wchar_t* path) {
    if (!path) return CeString();
    size_t n = wcslen(path);
    std::vector<wchar_t> out;
    out.reserve(n + 1);
    for (size_t i = 0; i < n; ++i) {
        if (path[i] == L'\\' && !out.empty() && out.back() == L'\\') continue;
        out.push_back(path[i]);
    }
    return CeString(out.data(), (int)out.size());
}

CeString backupPathOf(const wchar_t* path) {
    size_t n = path ? wcslen(path) : 0;
    size_t keep = n > 3 ? n - 3 : 0;
    CeString result(path, (int)keep);
    result.Append(L"BAK");
    return result;
}
