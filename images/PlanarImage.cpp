#include "images/PlanarImage.h"

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

// ---- the image ---------------------------------------------------------------

PlanarImage::PlanarImage(PlanarImage&& other) noexcept { *this = std::move(other); }

PlanarImage& PlanarImage::operator=(PlanarImage&& other) noexcept {
    if (this != &other) {
        Release();
        red = other.red;
        green = other.green;
        blue = other.blue;
        alpha = other.alpha;
        width = other.width;
        height = other.height;
        other.red = other.green = other.blue = other.alpha = nullptr;
        other.width = other.height = 0;
    }
    return *this;
}

void PlanarImage::Release() {
    delete[] red;
    delete[] green;
    delete[] blue;
    delete[] alpha;
    red = green = blue = alpha = nullptr;
    width = height = 0;
}

bool PlanarImage::Allocate(int newWidth, int newHeight) {
    Release();
    if (newWidth <= 0 || newHeight <= 0 || newWidth > kMaxImageSide || newHeight > kMaxImageSide) return false;
    size_t n = size_t(newWidth) * size_t(newHeight);
    red = new (std::nothrow) unsigned char[n]();
    green = new (std::nothrow) unsigned char[n]();
    blue = new (std::nothrow) unsigned char[n]();
    alpha = new (std::nothrow) unsigned char[n]();
    if (!red || !green || !blue || !alpha) {
        Release();
        return false;
    }
    width = newWidth;
    height = newHeight;
    return true;
}

bool PlanarImage::CopyFrom(const PlanarImage& other) {
    if (&other == this) return true;
    if (other.IsEmpty() || !other.green || !other.blue || !other.alpha) {
        Release();
        return true;
    }
    return SetPlanes(*this, other.red, other.green, other.blue, other.alpha, other.width, other.height) == 1;
}

int SetPlanes(PlanarImage& image, const unsigned char* red, const unsigned char* green, const unsigned char* blue,
              const unsigned char* alpha, int width, int height) {
    PlanarImage fresh;
    if (!red || !green || !blue || !alpha || !fresh.Allocate(width, height)) return 0;
    size_t n = size_t(width) * size_t(height);
    std::memcpy(fresh.red, red, n);
    std::memcpy(fresh.green, green, n);
    std::memcpy(fresh.blue, blue, n);
    std::memcpy(fresh.alpha, alpha, n);
    image = std::move(fresh);
    return 1;
}

int GetPlanes(const PlanarImage& image, unsigned char* red, unsigned char* green, unsigned char* blue,
              unsigned char* alpha) {
    if (image.IsEmpty() || !image.alpha) return 0;
    size_t n = size_t(image.PixelCount());
    if (red) std::memcpy(red, image.red, n);
    if (green) std::memcpy(green, image.green, n);
    if (blue) std::memcpy(blue, image.blue, n);
    if (alpha) std::memcpy(alpha, image.alpha, n);
    return 1;
}

// ---- the icon block of list and template files ---------------------------------

namespace {
struct IconFile {
    HANDLE handle = INVALID_HANDLE_VALUE;
    long long size = 0;
    explicit IconFile(const wchar_t* path) {
        handle = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        LARGE_INTEGER s;
        if (Valid() && GetFileSizeEx(handle, &s)) size = s.QuadPart;
    }
    ~IconFile() {
        if (Valid()) CloseHandle(handle);
    }
    bool Valid() const { return handle != INVALID_HANDLE_VALUE; }
    bool Read(void* out, DWORD count) {
        DWORD got = 0;
        return ReadFile(handle, out, count, &got, nullptr) && got == count;
    }
    long long Position() {
        LARGE_INTEGER zero, here;
        zero.QuadPart = 0;
        return SetFilePointerEx(handle, zero, &here, FILE_CURRENT) ? here.QuadPart : size;
    }
    void Skip(long long count) {
        LARGE_INTEGER d;
        d.QuadPart = count;
        SetFilePointerEx(handle, d, nullptr, FILE_CURRENT);
    }
};

bool IsVersionText(const wchar_t v[4]) { return v[0] == L'1' && v[1] == L'.' && v[2] == L'7' && v[3] == 0; }

// The 1007 payload (width, height) and the four plane chunks. Returns 1 with
// the icon, 1 without it when the block is damaged, 0 when a low-density
// screen refuses an icon wider than 16 pixels.
int ReadIconBlock(IconFile& file, PlanarImage& image, bool lowDensity) {
    image.Release();
    int32_t dims[2] = {0, 0};
    if (!file.Read(dims, sizeof dims)) return 1;
    int w = dims[0], h = dims[1];
    if (w > 16 && lowDensity) return 0;
    long long left = file.size - file.Position();
    if (w <= 0 || h <= 0 || w > kMaxImageSide || h > kMaxImageSide || (long long)w * h * 4 > left) return 1;
    PlanarImage fresh;
    if (!fresh.Allocate(w, h)) return 1;
    unsigned char* planes[4] = {fresh.red, fresh.green, fresh.blue, fresh.alpha};
    DWORD planeSize = DWORD(w) * DWORD(h);
    for (unsigned char* plane : planes) {
        uint32_t header[2];
        if (!file.Read(header, sizeof header)) return 1;
        DWORD take = header[0] < planeSize ? header[0] : planeSize;
        if (!file.Read(plane, take)) return 1;
        file.Skip((long long)header[0] - take);
    }
    image = std::move(fresh);
    return 1;
}
}  // namespace

int LoadListIcon(PlanarImage& image, const wchar_t* path, bool lowDensity) {
    image.Release();
    IconFile file(path);
    if (!file.Valid()) return 0;
    unsigned char header[16];
    if (!file.Read(header, sizeof header)) return 0;
    wchar_t version[4];
    std::memcpy(version, header, sizeof version);
    if (!IsVersionText(version)) return 0;
    // Every pass consumes at least 8 bytes, so the loop ends with the file.
    for (;;) {
        uint32_t chunk[2];
        if (!file.Read(chunk, sizeof chunk)) return 1;
        switch (chunk[1]) {
        case 1234: return 1;  // end of the first field: no icon before it
        case 4321: break;     // a container: its contents follow
        case 1007: return ReadIconBlock(file, image, lowDensity);
        default: file.Skip(chunk[0]); break;
        }
    }
}

int LoadTemplateIcon(PlanarImage& image, const wchar_t* path, bool lowDensity) {
    image.Release();
    IconFile file(path);
    if (!file.Valid()) return 0;
    unsigned char header[12];
    if (!file.Read(header, sizeof header)) return 0;
    wchar_t version[4];
    std::memcpy(version, header, sizeof version);
    if (!IsVersionText(version)) return 0;
    uint32_t chunk[2];
    // The icon must be the first chunk of a template.
    if (!file.Read(chunk, sizeof chunk) || chunk[1] != 1007) return 0;
    ReadIconBlock(file, image, lowDensity);
    return image.IsEmpty() ? 0 : 1;
}

// ---- drawing -----------------------------------------------------------------

ScreenPatch::~ScreenPatch() {
    if (bitmap) DeleteObject(bitmap);
}

namespace {
// A memory DC with one bitmap selected, restored and deleted on scope exit.
struct MemoryDC {
    HDC dc;
    HGDIOBJ old;
    MemoryDC(HDC like, HBITMAP bitmap) : dc(CreateCompatibleDC(like)), old(dc ? SelectObject(dc, bitmap) : nullptr) {}
    ~MemoryDC() {
        if (dc) {
            SelectObject(dc, old);
            DeleteDC(dc);
        }
    }
};
}  // namespace

bool ScreenPatch::Capture(HDC dc, int x, int y, int w, int h) {
    if (bitmap) DeleteObject(bitmap);
    bitmap = nullptr;
    bits = nullptr;
    width = w;
    height = h;
    stride = (w + 3) & ~3;
    rowBytes = (w * 3 + 3) & ~3;
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = h;  // bottom-up rows
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    info.bmiHeader.biSizeImage = DWORD(stride) * DWORD(h) * 3;
    info.bmiHeader.biXPelsPerMeter = 3780;
    info.bmiHeader.biYPelsPerMeter = 3780;
    void* pixels = nullptr;
    bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (!bitmap || !pixels) return false;
    bits = (unsigned char*)pixels;
    MemoryDC memory(dc, bitmap);
    if (!memory.dc) return false;
    BitBlt(memory.dc, 0, 0, w, h, dc, x, y, SRCCOPY);
    GdiFlush();  // the pixels are read directly next
    return true;
}

void ScreenPatch::Restore(HDC dc, int x, int y) const {
    if (!bitmap) return;
    MemoryDC memory(dc, bitmap);
    if (memory.dc) BitBlt(dc, x, y, width, height, memory.dc, 0, 0, SRCCOPY);
}

// dst*(255-a) + src*a + 128, then divided by 255 with rounding.
static inline unsigned char Blend(unsigned dst, unsigned src, unsigned a) {
    unsigned v = dst * (255 - a) + src * a + 128;
    return (unsigned char)((v + (v >> 8)) >> 8);
}

int DrawImage(const PlanarImage& image, HDC dc, int x, int y, int width, int height, int srcX, int srcY,
              int clipWidth, int clipHeight) {
    if (!image.alpha || !image.red || !image.green || !image.blue) return 0;
    if (width == -1) width = image.width;
    if (height == -1) height = image.height;
    if (clipWidth == -1 || clipWidth > image.width) clipWidth = image.width;
    if (clipHeight == -1) clipHeight = image.height;
    if (width <= 0 || height <= 0) return 1;
    ScreenPatch patch;
    if (!patch.Capture(dc, x, y, width, height)) return 1;
    int columns = clipWidth < width ? clipWidth : width;
    int rows = height < clipHeight ? height : clipHeight;
    long long pixelCount = (long long)image.width * image.height;
    for (int c = 0; c < columns; ++c) {
        for (int r = 0; r < rows; ++r) {
            long long index = c + (long long)(r + srcY) * image.width + srcX;
            if (index < 0 || index >= pixelCount) continue;
            unsigned a = image.alpha[index];
            unsigned char* p = patch.Pixel(c, height - r - 1);
            p[0] = Blend(p[0], image.blue[index], a);
            p[1] = Blend(p[1], image.green[index], a);
            p[2] = Blend(p[2], image.red[index], a);
        }
    }
    GdiFlush();
    patch.Restore(dc, x, y);
    return 1;
}
