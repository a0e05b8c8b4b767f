#include "document/ListFile.h"

#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

#include "LangIds.h"
#include "base/ResString.h"
#include "document/DocStrings.h"
#include "document/ListParse.h"
#include "document/ListFileIo.h"
#include "document/SafeWrite.h"

// ---- ByteReader / ByteWriter -------------------------------------------------

uint32_t ByteReader::U32() {
    uint32_t v = 0;
    Bytes(&v, 4);
    return v;
}

size_t ByteReader::Bytes(void* out, size_t count) {
    size_t take = count < Remaining() ? count : Remaining();
    if (take) std::memcpy(out, data + pos, take);
    if (take < count) {
        std::memset((unsigned char*)out + take, 0, count - take);
        overrun = true;
    }
    pos += take;
    return take;
}

bool ByteReader::ChunkHeader(uint32_t& chunkSize, uint32_t& tag) {
    if (Remaining() < 8) {
        if (Remaining() > 0) overrun = true;  // a chunk header cut in two
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

// ---- whole lists -------------------------------------------------------------

FileStatus parseListBytes(const void* bytes, size_t size, ListDocument& doc, const TextLayout* layout,
                          ListReadReport* report) {
    CeString path = doc.path;
    doc.Clear();
    doc.path = path;
    ListReadReport local;
    ListReadReport& counts = report ? *report : local;
    counts = ListReadReport();
    FileStatus version = listparse::CheckVersion(static_cast<const unsigned char*>(bytes), size);
    if (version != FileStatus::Ok) return version;
    if (size < size_t(kListHeaderSize)) return FileStatus::Damaged;
    ByteReader in(bytes, size);
    in.Skip(8);
    int32_t fieldCount = in.I32();
    uint32_t itemCount = in.U32();
    if (fieldCount < 0 || fieldCount > kMaxFields) return FileStatus::BadFieldCount;
    counts.itemsPromised = itemCount;
    doc.fields.assign(size_t(fieldCount), FieldDef());
    ViewState view;
    int fieldsRead = listparse::ReadHeaderChunks(in, doc.fields.data(), fieldCount, doc.icon, view);
    if (fieldsRead != fieldCount || in.Overrun()) {
        // Without every field the items cannot be placed: nothing is loaded.
        doc.Clear();
        doc.path = path;
        return FileStatus::Damaged;
    }
    TextLayout here = layout ? *layout : listTextLayout();
    const size_t budget = listparse::ItemMemoryBudget(size);
    if (listparse::ItemsCost(in, fieldCount, itemCount, budget) > budget) {
        doc.Clear();
        doc.path = path;
        return FileStatus::TooLarge;
    }
    listparse::ItemsRead items = listparse::ReadItems(in, doc, itemCount, here, budget);
    counts.itemsRead = items.count;
    doc.sortColumn = view.sortColumn;
    doc.sortDescending = view.sortDescending != 0;
    if (items.tooLarge) {
        doc.Clear();
        doc.path = path;
        return FileStatus::TooLarge;
    }
    return items.whole ? FileStatus::Ok : FileStatus::PartlyRead;
}

// "2 of 3" in the words of the language module.
static std::wstring CountOfTotal(long long part, long long whole) {
    return ResFormat(IDS_COUNT_OF_TOTAL, {std::to_wstring(part), std::to_wstring(whole)});
}

DocMessage listReadMessage(FileStatus status, const ListReadReport& report) {
    UINT text = 0;
    switch (status) {
    case FileStatus::Ok: return DocMessage();
    case FileStatus::Missing: text = IDS_LIST_MISSING; break;
    case FileStatus::Empty: text = IDS_LIST_EMPTY; break;
    case FileStatus::BadVersion: text = docstr::kWrongVersion; break;
    case FileStatus::TooLarge: text = IDS_LIST_TOO_LARGE; break;
    case FileStatus::PartlyRead: {
        std::wstring counts = CountOfTotal(report.itemsRead, report.itemsPromised);
        return {IDS_LIST_PARTLY_READ, IDS_SAVE_DAMAGED_CAPTION, MB_ICONEXCLAMATION, counts};
    }
    case FileStatus::CannotOpen: text = IDS_LIST_CANNOT_OPEN; break;
    default: text = IDS_LIST_DAMAGED; break;
    }
    return {text, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}};
}

ListFileResult readListFile(const wchar_t* path, ListDocument& doc, const ReadListOptions& options,
                            ListReadReport* report) {
    doc.Clear();
    ListReadReport local;
    ListReadReport& counts = report ? *report : local;
    counts = ListReadReport();
    CeString normal = normalizePath(path);
    std::vector<unsigned char> bytes;
    FileStatus status = ReadWholeFile(normal.c_str(), bytes);
    if (status == FileStatus::Ok) {
        doc.path = normal;
        status = parseListBytes(bytes.data(), bytes.size(), doc, nullptr, &counts);
    }
    if (status != FileStatus::Ok && status != FileStatus::PartlyRead) doc.Clear();
    // Only a file read whole is worth keeping, and the backup is written
    // from the very bytes that were checked (safely, like every write), so
    // it can never be worse than what it replaces.
    if (status == FileStatus::Ok && options.makeBackup)
        writeFileSafely(backupPathOf(normal.c_str()).c_str(), bytes.data(), bytes.size());
    return {status, listReadMessage(status, counts)};
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
                // A value of a type this version does not know keeps its
                // place with an empty chunk of its tag: leaving it out would
                // move every later value into the wrong field, and the list
                // would read back as damaged.
                out.ChunkHeader(0, (uint32_t)type);
                break;
            }
        }
    }
}

ListFileResult writeListBytes(const wchar_t* path, const ByteWriter& bytes) {
    SafeWriteResult written = writeFileSafely(path, bytes.bytes.data(), bytes.bytes.size());
    if (written.ok) return {FileStatus::Ok, {}};
    DocMessage message{docstr::kListNotCreated, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}};
    message.causeId = writeCauseTextId(written.cause);
    return {FileStatus::CannotCreate, message};
}

ListFileResult writeListFile(const wchar_t* path, const ListDocument& doc, const WriteListOptions& options) {
    ByteWriter out;
    buildListBytes(doc, out, options.chunkByFieldType);
    return writeListBytes(path, out);
}

// ---- templates -------------------------------------------------------------------

static DocMessage TemplateReadMessage(FileStatus status, int fieldsRead, int fieldsPromised) {
    UINT text = IDS_TEMPLATE_DAMAGED;
    switch (status) {
    case FileStatus::Ok: return DocMessage();
    case FileStatus::Missing: text = IDS_TEMPLATE_MISSING; break;
    case FileStatus::CannotOpen: text = IDS_TEMPLATE_OPEN_FAILED; break;
    case FileStatus::Empty: text = IDS_TEMPLATE_EMPTY; break;
    case FileStatus::BadVersion: text = IDS_TEMPLATE_VERSION_BAD; break;
    case FileStatus::PartlyRead: {
        std::wstring counts = CountOfTotal(fieldsRead, fieldsPromised);
        return {IDS_TEMPLATE_PARTLY_READ, docstr::kErrorCaption, MB_ICONEXCLAMATION, counts};
    }
    default: break;
    }
    return {text, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}};
}

FileStatus readTemplateFile(const wchar_t* path, TemplateFieldList& list, PlanarImage& icon, ViewState* view,
                            DocMessage* message) {
    std::vector<unsigned char> bytes;
    FileStatus status = ReadWholeFile(path, bytes);
    if (status == FileStatus::Ok) status = listparse::CheckVersion(bytes.data(), bytes.size());
    if (status == FileStatus::Ok && bytes.size() < size_t(kTemplateHeaderSize)) status = FileStatus::Damaged;
    int32_t fieldCount = 0;
    int fieldsRead = 0;
    if (status == FileStatus::Ok) {
        ByteReader in(bytes.data(), bytes.size());
        in.Skip(8);
        fieldCount = in.I32();
        if (fieldCount < 0 || fieldCount > kMaxFields) {
            status = FileStatus::BadFieldCount;
        } else {
            for (int i = 0; i < fieldCount; ++i) list.fields[i] = FieldDef();
            icon.Release();
            ViewState localView;
            fieldsRead = listparse::ReadHeaderChunks(in, list.fields, fieldCount, icon, localView);
            if (fieldsRead < 0) fieldsRead = 0;
            bool cut = fieldsRead != fieldCount || in.Overrun();
            // A field cut short is dropped; the ones before it are whole.
            if (cut && fieldsRead == fieldCount && fieldsRead > 0) --fieldsRead;
            list.count = fieldsRead;
            if (view) *view = localView;
            if (cut) status = fieldsRead > 0 ? FileStatus::PartlyRead : FileStatus::Damaged;
        }
    }
    if (message) *message = TemplateReadMessage(status, fieldsRead, fieldCount);
    return status;
}

FileStatus writeTemplateFile(const wchar_t* path, const FieldDef* fields, int fieldCount, const PlanarImage& icon,
                             DocMessage* message) {
    ByteWriter out;
    out.Raw(L"1.7", 8);
    out.I32(fieldCount);
    writeHeaderChunks(out, fields, fieldCount, icon, ViewState());
    SafeWriteResult written = writeFileSafely(path, out.bytes.data(), out.bytes.size());
    if (message) {
        *message = DocMessage();
        if (!written.ok) {
            *message = {IDS_TEMPLATE_CREATE_FAILED, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}};
            message->causeId = writeCauseTextId(written.cause);
        }
    }
    return written.ok ? FileStatus::Ok : FileStatus::CannotCreate;
}

FileStatus writeTemplateFile(const wchar_t* path, const TemplateFieldList& list, const PlanarImage& icon,
                             DocMessage* message) {
    int count = list.count < 0 ? 0 : list.count > kMaxFields ? kMaxFields : list.count;
    return writeTemplateFile(path, list.fields, count, icon, message);
}

FileStatus buildListFromTemplate(const wchar_t* templatePath, ByteWriter& out, DocMessage* message) {
    std::unique_ptr<TemplateFieldList> fields(new TemplateFieldList);
    PlanarImage icon;
    ViewState view;
    FileStatus status = readTemplateFile(templatePath, *fields, icon, &view, message);
    if (status == FileStatus::PartlyRead) {
        // A list made from part of a template would be a different list.
        status = FileStatus::Damaged;
        if (message) *message = TemplateReadMessage(status, 0, 0);
    }
    if (status != FileStatus::Ok) return status;
    out.Raw(L"1.7", 8);
    out.I32(fields->count);
    out.U32(0);
    writeHeaderChunks(out, *fields, icon, view);
    return FileStatus::Ok;
}

FileStatus makeListFromTemplate(const wchar_t* templatePath, const wchar_t* listPath, DocMessage* message) {
    ByteWriter out;
    FileStatus status = buildListFromTemplate(templatePath, out, message);
    if (status != FileStatus::Ok) return status;
    ListFileResult written = writeListBytes(normalizePath(listPath).c_str(), out);
    if (message) {
        *message = written.message;
        if (written != FileStatus::Ok) message->textId = IDS_LIST_CREATE_FAILED;
    }
    return written.code;
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
