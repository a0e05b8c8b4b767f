// TGA decoding into planar images: uncompressed (type 2) and run-length
// (type 10) true-colour, 24 or 32 bits per pixel.
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

#include "images/PlanarImage.h"

namespace {

constexpr size_t kTgaHeaderSize = 18;
// A TGA icon is a few kilobytes; larger files are refused rather than read.
constexpr long kMaxTgaFileSize = 64L * 1024 * 1024;

struct PixelSource {
    const unsigned char* data;
    size_t size;
    size_t pos;
    int bytesPerPixel;
    bool Byte(unsigned char& out) {
        if (pos >= size) return false;
        out = data[pos++];
        return true;
    }
    // Blue, green, red and, for 32 bits, alpha; otherwise alpha is 255.
    bool Pixel(unsigned char bgra[4]) {
        if (size - pos < size_t(bytesPerPixel)) return false;
        bgra[0] = data[pos];
        bgra[1] = data[pos + 1];
        bgra[2] = data[pos + 2];
        bgra[3] = bytesPerPixel == 4 ? data[pos + 3] : 255;
        pos += size_t(bytesPerPixel);
        return true;
    }
};

inline void Put(PlanarImage& image, size_t index, const unsigned char bgra[4]) {
    // Packets that run past their row write on into the following memory;
    // only the end of the image stops them.
    if (index >= size_t(image.PixelCount())) return;
    image.blue[index] = bgra[0];
    image.green[index] = bgra[1];
    image.red[index] = bgra[2];
    image.alpha[index] = bgra[3];
}

bool DecodeRow(PlanarImage& image, PixelSource& in, size_t rowStart, bool runLength) {
    const int w = image.width;
    unsigned char pixel[4];
    if (!runLength) {
        for (int x = 0; x < w; ++x) {
            if (!in.Pixel(pixel)) return false;
            Put(image, rowStart + size_t(x), pixel);
        }
        return true;
    }
    for (int x = 0; x < w;) {
        unsigned char packet;
        if (!in.Byte(packet)) return false;
        int count = (packet & 0x7F) + 1;
        if (packet & 0x80) {
            if (!in.Pixel(pixel)) return false;
            for (int k = 0; k < count; ++k) Put(image, rowStart + size_t(x + k), pixel);
        } else {
            for (int k = 0; k < count; ++k) {
                if (!in.Pixel(pixel)) return false;
                Put(image, rowStart + size_t(x + k), pixel);
            }
        }
        x += count;
    }
    return true;
}

}  // namespace

HRESULT DecodeTga(PlanarImage& image, const unsigned char* data, size_t size) {
    image.Release();
    if (!data || size < kTgaHeaderSize) return E_FAIL;
    const unsigned idLength = data[0];
    const unsigned colourMapType = data[1];
    const unsigned imageType = data[2];
    const int width = data[12] | (data[13] << 8);
    const int height = data[14] | (data[15] << 8);
    const unsigned bitsPerPixel = data[16];
    const unsigned descriptor = data[17];
    if (colourMapType != 0 || (imageType != 2 && imageType != 10)) return E_FAIL;
    if (width == 0 || height == 0 || width > kMaxImageSide || height > kMaxImageSide) return E_FAIL;
    size_t start = kTgaHeaderSize + idLength;
    if (start > size) return E_FAIL;
    PixelSource in = {data, size, start, bitsPerPixel == 32 ? 4 : 3};
    size_t pixels = size_t(width) * size_t(height);
    size_t available = size - start;
    // Refuse before allocating what the data cannot fill: raw pixels need
    // their bytes, and a run packet of 1 + 3 bytes gives at most 128 pixels.
    if (imageType == 2 && pixels * size_t(in.bytesPerPixel) > available) return E_FAIL;
    if (imageType == 10 && pixels > available * 32) return E_FAIL;
    PlanarImage fresh;
    if (!fresh.Allocate(width, height)) return E_FAIL;
    // Bit 4 of the descriptor (not the usual bit 5) marks rows stored top first.
    const bool topFirst = (descriptor & 0x10) != 0;
    for (int r = 0; r < height; ++r) {
        int memoryRow = topFirst ? r : height - 1 - r;
        if (!DecodeRow(fresh, in, size_t(memoryRow) * size_t(width), imageType == 10)) return E_FAIL;
    }
    image = std::move(fresh);
    return S_OK;
}

HRESULT LoadTgaResource(PlanarImage& image, HMODULE module, UINT resourceId) {
    image.Release();
    HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(resourceId), L"TARGA");
    if (!found) return E_FAIL;
    DWORD size = SizeofResource(module, found);
    HGLOBAL loaded = LoadResource(module, found);
    const unsigned char* data = loaded ? (const unsigned char*)LockResource(loaded) : nullptr;
    if (!data) return E_FAIL;
    return DecodeTga(image, data, size);
}

namespace {
struct StdFile {
    FILE* f;
    explicit StdFile(const wchar_t* path) : f(path ? _wfopen(path, L"rb") : nullptr) {}
    ~StdFile() {
        if (f) fclose(f);
    }
};
}  // namespace

HRESULT LoadTgaFile(PlanarImage& image, const wchar_t* path) {
    image.Release();
    StdFile file(path);
    if (!file.f) return E_FAIL;
    if (fseek(file.f, 0, SEEK_END) != 0) return E_FAIL;
    long size = ftell(file.f);
    if (size < 0 || size > kMaxTgaFileSize || fseek(file.f, 0, SEEK_SET) != 0) return E_FAIL;
    std::vector<unsigned char> bytes(size_t(size) + 1);
    size_t got = fread(bytes.data(), 1, size_t(size), file.f);
    return DecodeTga(image, bytes.data(), got);
}

SIZE ReadTgaSize(const wchar_t* path) {
    SIZE result = {0, 0};
    StdFile file(path);
    if (!file.f) return result;
    unsigned char header[kTgaHeaderSize];
    if (fread(header, 1, sizeof header, file.f) != sizeof header) return result;
    result.cx = header[12] | (header[13] << 8);
    result.cy = header[14] | (header[15] << 8);
    return result;
}
