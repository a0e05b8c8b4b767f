// TGA decoding, the icon block of list and template files, and the blend.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "ImageIds.h"
#include "base/AppGlobals.h"
#include "images/PlanarImage.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

Bytes Tga(int type, int width, int height, int bits, int descriptor, const ByteVec& data, int idLength = 0,
          int colourMap = 0) {
    return Bytes().tgaHeader(type, width, height, bits, descriptor, idLength, colourMap).raw(data);
}

// 0xRRGGBB values in hex, `width` to a row, rows split by "/".
std::string Hex(const std::vector<unsigned>& pixels, int width) {
    std::string out;
    char hex[8];
    for (size_t i = 0; i < pixels.size(); ++i) {
        std::snprintf(hex, sizeof hex, "%06X", pixels[i] & 0xFFFFFF);
        out += (i == 0 ? "" : i % width ? " " : "/") + std::string(hex);
    }
    return out;
}

// Every pixel as "red,green,blue,alpha", rows top first and split by "/".
std::string Pixels(const PlanarImage& img) {
    std::string out;
    for (int i = 0; !img.IsEmpty() && i < img.width * img.height; ++i) {
        if (i) out += i % img.width ? " " : "/";
        out += std::to_string(img.red[i]) + "," + std::to_string(img.green[i]) + "," + std::to_string(img.blue[i]) +
               "," + std::to_string(img.alpha[i]);
    }
    return out;
}

// The pixels of a decoded file, or "refused" when decoding fails and leaves
// the image that was there before empty.
std::string Decoded(const Bytes& file) {
    PlanarImage img;
    Bytes good = Tga(2, 1, 1, 24, 0, {1, 2, 3});
    DecodeTga(img, good.v.data(), good.v.size());
    HRESULT hr = DecodeTga(img, file.v.data(), file.v.size());
    if (hr == S_OK) return Pixels(img);
    return hr == E_FAIL && img.IsEmpty() ? "refused" : "refused, but image kept or wrong result";
}

// The pixels (0xRRGGBB, rows top first, split by "/") of a 32-bit top-down
// DIB filled with `fill`, after `draw` has drawn on its memory DC.
std::string Drawn(int w, int h, unsigned fill, const std::function<void(HDC)>& draw) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    unsigned* bits = nullptr;
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, (void**)&bits, nullptr, 0);
    HGDIOBJ old = SelectObject(dc, bitmap);
    std::fill(bits, bits + w * h, fill);
    draw(dc);
    GdiFlush();
    std::vector<unsigned> pixels(bits, bits + w * h);
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return Hex(pixels, w);
}

// The blend spelled out: dst*(255-a) + src*a, divided by 255, rounded.
int Rounded(int dst, int src, int a) { return (dst * (255 - a) + src * a + 127) / 255; }
unsigned Mix(unsigned dst, int r, int g, int b, int a) {
    return unsigned(Rounded((dst >> 16) & 0xFF, r, a) << 16 | Rounded((dst >> 8) & 0xFF, g, a) << 8 |
                    Rounded(dst & 0xFF, b, a));
}

}  // namespace

TEST_CASE(Tga_DecodedPixels) {
    const struct {
        Bytes file;
        const char* pixels;
        int line;
    } kRows[] = {
        // Stored blue, green, red (and alpha); an image ID is skipped.
        {Tga(2, 2, 1, 24, 0x10, {1, 2, 3, 4, 5, 6}), "3,2,1,255 6,5,4,255", __LINE__},
        {Tga(2, 1, 1, 32, 0x10, {0xAA, 0xBB, 0xCC, 10, 20, 30, 0}, 3), "30,20,10,0", __LINE__},
        // Bit 4 set: the file's first row is the top one; the usual top-left
        // flag (bit 5) is not looked at.
        {Tga(2, 1, 2, 24, 0x10, {0, 0, 255, 255, 0, 0}), "255,0,0,255/0,0,255,255", __LINE__},
        {Tga(2, 1, 2, 24, 0x20, {0, 0, 255, 255, 0, 0}), "0,0,255,255/255,0,0,255", __LINE__},
        // Run-length packets: a run of 4, 2 raw, a run of 2.
        {Tga(10, 4, 2, 32, 0x10, {0x83, 1, 2, 3, 4, 0x01, 5, 6, 7, 8, 9, 10, 11, 12, 0x81, 13, 14, 15, 16}),
         "3,2,1,4 3,2,1,4 3,2,1,4 3,2,1,4/7,6,5,8 11,10,9,12 15,14,13,16 15,14,13,16", __LINE__},
        // A packet running past its row writes on into the memory that
        // follows: bottom-first, that is the row decoded before.
        {Tga(10, 3, 2, 24, 0, {0x02, 1, 1, 1, 2, 2, 2, 3, 3, 3, 0x84, 9, 9, 9}),
         "9,9,9,255 9,9,9,255 9,9,9,255/9,9,9,255 9,9,9,255 3,3,3,255", __LINE__},
        {Tga(1, 1, 1, 8, 0, {0, 0, 0}), "refused", __LINE__},         // colour-mapped
        {Tga(3, 1, 1, 8, 0, {0, 0, 0}), "refused", __LINE__},         // grey
        {Tga(2, 1, 1, 24, 0, {0, 0, 0}, 0, 1), "refused", __LINE__},  // with a colour map
        {Tga(2, 2, 2, 24, 0, {1, 2, 3}), "refused", __LINE__},        // data too short
        {Tga(10, 2, 2, 24, 0, {0x81, 1, 2, 3}), "refused", __LINE__},  // packets too short
        {Tga(10, 65535, 65535, 32, 0, {0xFF, 1, 2, 3, 4}), "refused", __LINE__},  // too large
        {Tga(2, 0, 5, 24, 0, {}), "refused", __LINE__},                          // no width
        {Bytes().raw({0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 24}), "refused", __LINE__},  // header cut
    };
    for (const auto& row : kRows) CHECK_EQ_AT(Decoded(row.file), std::string(row.pixels), __FILE__, row.line);
}

TEST_CASE(Tga_FilesAndResources) {
    std::wstring dir = ScratchDir(L"tga");
    WriteBytes(dir + L"\\a.tga", Tga(2, 3, 2, 32, 0x10, {0, 0, 0, 255, 1, 1, 1, 255, 2, 2, 2, 255, 3, 3, 3, 255, 4, 4,
                                                        4, 255, 5, 5, 5, 255}).v);
    SIZE size = ReadTgaSize((dir + L"\\a.tga").c_str());
    CHECK_EQ((int)size.cx, 3);
    CHECK_EQ((int)size.cy, 2);
    size = ReadTgaSize((dir + L"\\none.tga").c_str());
    CHECK_EQ((int)(size.cx + size.cy), 0);
    PlanarImage img;
    CHECK_EQ(LoadTgaFile(img, (dir + L"\\a.tga").c_str()), S_OK);
    CHECK_EQ(Pixels(img), std::string("0,0,0,255 1,1,1,255 2,2,2,255/3,3,3,255 4,4,4,255 5,5,5,255"));
    CHECK_EQ(LoadTgaFile(img, (dir + L"\\none.tga").c_str()), E_FAIL);
    CHECK(img.IsEmpty());
    CHECK_EQ(LoadTgaResource(img, hImageModule, IDT_DEFAULT_LIST), S_OK);
    CHECK(img.IsDrawable());
    CHECK_EQ(LoadTgaResource(img, hImageModule, 9999), E_FAIL);
    CHECK(img.IsEmpty());
}

TEST_CASE(Tga_DrawImageExactBlend) {
    const unsigned bg = 0x3C64C8;  // red 60, green 100, blue 200
    // By alpha: 0 leaves the background, 255 is the source, 128 and 64 blend.
    PlanarImage img, empty;
    Bytes file = Tga(2, 2, 2, 32, 0x10, {0, 0, 255, 0, 30, 20, 10, 255, 255, 255, 255, 128, 50, 200, 100, 64});
    CHECK_EQ(DecodeTga(img, file.v.data(), file.v.size()), S_OK);
    const unsigned half = Mix(bg, 255, 255, 255, 128), quarter = Mix(bg, 100, 200, 50, 64);
    // One value worked by hand: green 100 under 200 at alpha 64 -> 125.
    CHECK_EQ((int)((quarter >> 8) & 0xFF), 125);
    CHECK_EQ(Drawn(5, 4, bg, [&](HDC dc) { CHECK_EQ(DrawImage(img, dc, 1, 1), 1); }),
             Hex({bg, bg, bg, bg, bg, bg, bg, 0x0A141E, bg, bg, bg, half, quarter, bg, bg, bg, bg, bg, bg, bg}, 5));
    // Source offset and clip: one column taken from source column 1. An
    // empty image draws nothing.
    std::string drawn = Drawn(3, 2, 0, [&](HDC dc) {
        CHECK_EQ(DrawImage(img, dc, 0, 0, -1, -1, 1, 0, 1, -1), 1);
        CHECK_EQ(DrawImage(empty, dc, 0, 0), 0);
    });
    CHECK_EQ(drawn, Hex({0x0A141E, 0, 0, Mix(0, 100, 200, 50, 64), 0, 0}, 3));
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
    CHECK_EQ(Pixels(img), std::string("7,8,9,10"));
    CHECK_EQ(LoadTemplateIcon(img, (dir + L"\\late.zvt").c_str(), false), 0);
    CHECK(img.IsEmpty());
}
