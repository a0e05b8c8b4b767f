// TGA decoding, the icon block of list and template files, and the blend.
#include <string>

#include "ImageIds.h"
#include "base/AppGlobals.h"
#include "images/PlanarImage.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

Bytes TgaHeader(int type, int width, int height, int bits, int descriptor, int idLength = 0, int colourMap = 0) {
    return Bytes().tgaHeader(type, width, height, bits, descriptor, idLength, colourMap);
}

struct Rgba {
    int r, g, b, a;
};

void CheckPixel(const PlanarImage& img, int x, int y, Rgba want, const char* file, int line) {
    int i = y * img.width + x;
    CHECK_EQ_AT((int)img.red[i], want.r, file, line);
    CHECK_EQ_AT((int)img.green[i], want.g, file, line);
    CHECK_EQ_AT((int)img.blue[i], want.b, file, line);
    CHECK_EQ_AT((int)img.alpha[i], want.a, file, line);
}

HRESULT Decode(PlanarImage& img, const Bytes& b) { return DecodeTga(img, b.v.data(), b.v.size()); }

// A 32-bit top-down DIB selected into a memory DC, for drawing tests.
struct Canvas {
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    HGDIOBJ old = nullptr;
    unsigned* pixels = nullptr;
    int width, height;
    Canvas(int w, int h, unsigned fill) : width(w), height(h) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = w;
        info.bmiHeader.biHeight = -h;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        dc = CreateCompatibleDC(nullptr);
        bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels = (unsigned*)bits;
        old = SelectObject(dc, bitmap);
        for (int i = 0; i < w * h; ++i) pixels[i] = fill;
    }
    ~Canvas() {
        SelectObject(dc, old);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    unsigned At(int x, int y) {
        GdiFlush();
        return pixels[y * width + x] & 0xFFFFFF;
    }
};

// The blend spelled out: dst*(255-a) + src*a, divided by 255, rounded.
int Rounded(int dst, int src, int a) { return (dst * (255 - a) + src * a + 127) / 255; }
unsigned Mix(unsigned dst, Rgba src) {
    int r = Rounded((dst >> 16) & 0xFF, src.r, src.a);
    int g = Rounded((dst >> 8) & 0xFF, src.g, src.a);
    int b = Rounded(dst & 0xFF, src.b, src.a);
    return unsigned(r << 16 | g << 8 | b);
}

}  // namespace

TEST_CASE(Tga_Uncompressed24And32Bit) {
    Bytes t24 = TgaHeader(2, 2, 1, 24, 0x10);
    t24.u8(1).u8(2).u8(3).u8(4).u8(5).u8(6);  // blue, green, red
    PlanarImage img;
    CHECK_EQ(Decode(img, t24), S_OK);
    CHECK_EQ(img.width, 2);
    CHECK_EQ(img.height, 1);
    CheckPixel(img, 0, 0, {3, 2, 1, 255}, ZV_HERE);
    CheckPixel(img, 1, 0, {6, 5, 4, 255}, ZV_HERE);

    Bytes t32 = TgaHeader(2, 1, 1, 32, 0x10, 3);
    t32.u8(0xAA).u8(0xBB).u8(0xCC);  // image ID, skipped
    t32.u8(10).u8(20).u8(30).u8(0);
    CHECK_EQ(Decode(img, t32), S_OK);
    CheckPixel(img, 0, 0, {30, 20, 10, 0}, ZV_HERE);
}

TEST_CASE(Tga_RowOrderFollowsBit4) {
    // Two rows: the file's first row is red, the second blue.
    auto make = [](int descriptor) {
        Bytes b = TgaHeader(2, 1, 2, 24, descriptor);
        b.u8(0).u8(0).u8(255).u8(255).u8(0).u8(0);
        return b;
    };
    PlanarImage img;
    CHECK_EQ(Decode(img, make(0x10)), S_OK);  // stored top row first
    CheckPixel(img, 0, 0, {255, 0, 0, 255}, ZV_HERE);
    CheckPixel(img, 0, 1, {0, 0, 255, 255}, ZV_HERE);
    CHECK_EQ(Decode(img, make(0x20)), S_OK);  // the usual top-left flag is not looked at
    CheckPixel(img, 0, 0, {0, 0, 255, 255}, ZV_HERE);
    CheckPixel(img, 0, 1, {255, 0, 0, 255}, ZV_HERE);
}

TEST_CASE(Tga_RunLengthPackets) {
    Bytes b = TgaHeader(10, 4, 2, 32, 0x10);
    b.u8(0x83).u8(1).u8(2).u8(3).u8(4);                          // run of 4
    b.u8(0x01).u8(5).u8(6).u8(7).u8(8).u8(9).u8(10).u8(11).u8(12);  // 2 raw
    b.u8(0x81).u8(13).u8(14).u8(15).u8(16);                      // run of 2
    PlanarImage img;
    CHECK_EQ(Decode(img, b), S_OK);
    for (int x = 0; x < 4; ++x) CheckPixel(img, x, 0, {3, 2, 1, 4}, ZV_HERE);
    CheckPixel(img, 0, 1, {7, 6, 5, 8}, ZV_HERE);
    CheckPixel(img, 1, 1, {11, 10, 9, 12}, ZV_HERE);
    CheckPixel(img, 3, 1, {15, 14, 13, 16}, ZV_HERE);

    // A packet running past its row writes on into the memory that follows:
    // bottom-first, that is the row decoded before.
    Bytes cross = TgaHeader(10, 3, 2, 24, 0);
    cross.u8(0x02).u8(1).u8(1).u8(1).u8(2).u8(2).u8(2).u8(3).u8(3).u8(3);  // bottom row: 3 raw
    cross.u8(0x84).u8(9).u8(9).u8(9);                                    // top row: run of 5
    CHECK_EQ(Decode(img, cross), S_OK);
    CheckPixel(img, 0, 0, {9, 9, 9, 255}, ZV_HERE);
    CheckPixel(img, 2, 0, {9, 9, 9, 255}, ZV_HERE);
    CheckPixel(img, 0, 1, {9, 9, 9, 255}, ZV_HERE);
    CheckPixel(img, 1, 1, {9, 9, 9, 255}, ZV_HERE);
    CheckPixel(img, 2, 1, {3, 3, 3, 255}, ZV_HERE);
}

TEST_CASE(Tga_RefusedHeadersLeaveImageEmpty) {
    Bytes good = TgaHeader(2, 1, 1, 24, 0).u8(1).u8(2).u8(3);
    const struct {
        Bytes file;
        int line;
    } kRefused[] = {
        {TgaHeader(1, 1, 1, 8, 0).u8(0).u8(0).u8(0), __LINE__},               // colour-mapped
        {TgaHeader(3, 1, 1, 8, 0).u8(0).u8(0).u8(0), __LINE__},               // grey
        {TgaHeader(2, 1, 1, 24, 0, 0, 1).u8(0).u8(0).u8(0), __LINE__},        // with a colour map
        {TgaHeader(2, 2, 2, 24, 0).u8(1).u8(2).u8(3), __LINE__},              // data too short
        {TgaHeader(10, 2, 2, 24, 0).u8(0x81).u8(1).u8(2).u8(3), __LINE__},    // packets too short
        {TgaHeader(10, 65535, 65535, 32, 0).u8(0xFF).u32(0x04030201), __LINE__},  // too large
        {TgaHeader(2, 0, 5, 24, 0), __LINE__},                                // no width
        {Bytes().raw(ByteVec(good.v.begin(), good.v.begin() + 17)), __LINE__},   // header cut
    };
    for (const auto& row : kRefused) {
        PlanarImage img;
        CHECK_EQ(Decode(img, good), S_OK);
        CHECK_EQ_AT(Decode(img, row.file), E_FAIL, __FILE__, row.line);
        CHECK_AT(img.IsEmpty(), __FILE__, row.line);
    }
}

TEST_CASE(Tga_FilesAndResources) {
    std::wstring dir = ScratchDir(L"tga");
    Bytes b = TgaHeader(2, 3, 2, 32, 0x10);
    for (int i = 0; i < 6; ++i) b.u8(i).u8(i).u8(i).u8(255);
    WriteBytes(dir + L"\\a.tga", b.v);
    SIZE size = ReadTgaSize((dir + L"\\a.tga").c_str());
    CHECK_EQ((int)size.cx, 3);
    CHECK_EQ((int)size.cy, 2);
    size = ReadTgaSize((dir + L"\\none.tga").c_str());
    CHECK_EQ((int)(size.cx + size.cy), 0);
    PlanarImage img;
    CHECK_EQ(LoadTgaFile(img, (dir + L"\\a.tga").c_str()), S_OK);
    CheckPixel(img, 2, 1, {5, 5, 5, 255}, ZV_HERE);
    CHECK_EQ(LoadTgaFile(img, (dir + L"\\none.tga").c_str()), E_FAIL);
    CHECK(img.IsEmpty());
    CHECK_EQ(LoadTgaResource(img, hImageModule, IDT_DEFAULT_LIST), S_OK);
    CHECK(img.IsDrawable());
    CHECK_EQ(LoadTgaResource(img, hImageModule, 9999), E_FAIL);
    CHECK(img.IsEmpty());
}

TEST_CASE(Tga_DrawImageExactBlend) {
    const unsigned background = 0x3C64C8;  // red 60, green 100, blue 200
    Rgba px[4] = {{255, 0, 0, 0}, {10, 20, 30, 255}, {255, 255, 255, 128}, {100, 200, 50, 64}};
    unsigned char r[4], g[4], b[4], a[4];
    for (int i = 0; i < 4; ++i) {
        r[i] = (unsigned char)px[i].r;
        g[i] = (unsigned char)px[i].g;
        b[i] = (unsigned char)px[i].b;
        a[i] = (unsigned char)px[i].a;
    }
    PlanarImage img;
    SetPlanes(img, r, g, b, a, 2, 2);
    Canvas canvas(5, 4, background);
    CHECK_EQ(DrawImage(img, canvas.dc, 1, 1), 1);
    CHECK_EQ(canvas.At(1, 1), background);  // alpha 0 leaves the background
    CHECK_EQ(canvas.At(2, 1), 0x0A141Eu);    // alpha 255 is the source
    CHECK_EQ(canvas.At(1, 2), Mix(background, px[2]));
    CHECK_EQ(canvas.At(2, 2), Mix(background, px[3]));
    // One value worked by hand: green 100 under 200 at alpha 64 -> 125.
    CHECK_EQ((int)((canvas.At(2, 2) >> 8) & 0xFF), 125);
    CHECK_EQ(canvas.At(0, 0), background);
    CHECK_EQ(canvas.At(3, 3), background);

    // Source offset and clip: one column taken from source column 1.
    Canvas second(3, 2, 0);
    CHECK_EQ(DrawImage(img, second.dc, 0, 0, -1, -1, 1, 0, 1, -1), 1);
    CHECK_EQ(second.At(0, 0), 0x0A141Eu);
    CHECK_EQ(second.At(0, 1), Mix(0, px[3]));
    CHECK_EQ(second.At(1, 0), 0u);
    PlanarImage empty;
    CHECK_EQ(DrawImage(empty, second.dc, 0, 0), 0);
}

TEST_CASE(Tga_ListIconByScreenDensity) {
    std::wstring dir = ScratchDir(L"icons");
    auto listWithIcon = [](int side) {
        Bytes b;
        b.listHeader(0, 0).chunk(1007, Bytes().i32(side).i32(side));
        for (int p = 0; p < 4; ++p) b.chunk(1008, Bytes().raw(ByteVec(size_t(side * side), (unsigned char)(p + 1))));
        b.viewState(-1, 0).chunk0(4321);
        return b;
    };
    WriteBytes(dir + L"\\big.zvl", listWithIcon(32).v);
    WriteBytes(dir + L"\\small.zvl", listWithIcon(16).v);
    Bytes plain;
    plain.listHeader(1, 0).viewState(-1, 0).chunk0(4321).chunkU32(1002, 3).chunk0(1234);
    WriteBytes(dir + L"\\plain.zvl", plain.v);
    WriteBytes(dir + L"\\junk.zvl", Bytes().wstr(L"1.6").i32(0).i32(0).v);
    PlanarImage img;
    CHECK_EQ(LoadListIcon(img, (dir + L"\\big.zvl").c_str(), true), 0);
    CHECK(img.IsEmpty());
    CHECK_EQ(LoadListIcon(img, (dir + L"\\small.zvl").c_str(), true), 1);
    CHECK_EQ(img.width, 16);
    CHECK_EQ(LoadListIcon(img, (dir + L"\\big.zvl").c_str(), false), 1);
    CHECK_EQ(img.width, 32);
    CHECK_EQ((int)img.alpha[32 * 32 - 1], 4);
    CHECK_EQ((int)img.green[0], 2);
    CHECK_EQ(LoadListIcon(img, (dir + L"\\plain.zvl").c_str(), false), 1);
    CHECK(img.IsEmpty());
    CHECK_EQ(LoadListIcon(img, (dir + L"\\junk.zvl").c_str(), false), 0);
    CHECK_EQ(LoadListIcon(img, (dir + L"\\none.zvl").c_str(), false), 0);

    // Templates: the icon must be the first chunk after the 12-byte header.
    Bytes tpl;
    tpl.templateHeader(0).chunk(1007, Bytes().i32(1).i32(1));
    for (int p = 0; p < 4; ++p) tpl.chunk(1008, Bytes().u8(p + 7));
    tpl.viewState(-1, 0);
    WriteBytes(dir + L"\\t.zvt", tpl.v);
    Bytes late;
    late.templateHeader(0).viewState(-1, 0).chunk(1007, Bytes().i32(1).i32(1));
    WriteBytes(dir + L"\\late.zvt", late.v);
    CHECK_EQ(LoadTemplateIcon(img, (dir + L"\\t.zvt").c_str(), false), 1);
    CHECK_EQ((int)img.red[0], 7);
    CHECK_EQ((int)img.alpha[0], 10);
    CHECK_EQ(LoadTemplateIcon(img, (dir + L"\\late.zvt").c_str(), false), 0);
    CHECK(img.IsEmpty());
}
