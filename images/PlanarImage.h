// Icons as four byte planes (red, green, blue, alpha), the TGA decoder that
// fills them, the icon block of list and template files, and the program's
// own alpha blend onto a device context.
//
// Every loader leaves the image empty (never half-filled) when it fails, so a
// caller can always fall back on a default image.
#pragma once
#include <windows.h>

// One icon: four planes of width * height bytes each, row-major, top row
// first. Alpha 255 is opaque. Empty when the planes are absent.
struct PlanarImage {
    unsigned char* red = nullptr;
    unsigned char* green = nullptr;
    unsigned char* blue = nullptr;
    unsigned char* alpha = nullptr;
    int height = 0;
    int width = 0;

    PlanarImage() = default;
    ~PlanarImage() { Release(); }
    PlanarImage(const PlanarImage&) = delete;
    PlanarImage& operator=(const PlanarImage&) = delete;
    PlanarImage(PlanarImage&& other) noexcept;
    PlanarImage& operator=(PlanarImage&& other) noexcept;

    // Frees all four planes; the image becomes empty.
    void Release();
    // Allocates four zeroed planes (frees the old ones first). False, and the
    // image empty, when width or height is not positive or memory runs out.
    bool Allocate(int newWidth, int newHeight);
    // A deep copy of `other` (empty when `other` is empty). False on no memory.
    bool CopyFrom(const PlanarImage& other);

    bool IsEmpty() const { return red == nullptr; }
    bool IsDrawable() const { return alpha != nullptr; }
    int PixelCount() const { return width * height; }
};

// Largest image the decoders accept (pixels per side). Icons are 16 to 64
// pixels; the limit only keeps damaged files from asking for gigabytes.
constexpr int kMaxImageSide = 4096;

// Decodes resource `resourceId` of type "TARGA" from `module`.
// Returns 0 (S_OK) on success, E_FAIL on any failure.
HRESULT LoadTgaResource(PlanarImage& image, HMODULE module, UINT resourceId);
// The same decoding from a .tga file.
HRESULT LoadTgaFile(PlanarImage& image, const wchar_t* path);
// The same decoding from bytes in memory (the two loaders above end here).
HRESULT DecodeTga(PlanarImage& image, const unsigned char* data, size_t size);

// Width and height from a TGA file's header; 0 and 0 when it cannot be read.
SIZE ReadTgaSize(const wchar_t* path);

// Reads the icon of a list file. Returns 1 when the file is a list file
// (version "1.7"), with or without an icon; 0 otherwise. For a low-density
// screen (the caller's IsLowDensityScreen()) icons wider than 16 pixels are
// refused: 0 and no icon. The image is empty unless an icon was read.
int LoadListIcon(PlanarImage& image, const wchar_t* path, bool lowDensity);
// Reads the icon of a template file: loaded only when it is the first chunk
// after the 12-byte header (and, for a low-density screen, at most 16 pixels
// wide). Returns 1 when an icon was loaded, else 0.
int LoadTemplateIcon(PlanarImage& image, const wchar_t* path, bool lowDensity);

// Copies four caller planes of width * height bytes into a fresh image.
// Returns 1 (0 when the size is not positive or memory runs out).
int SetPlanes(PlanarImage& image, const unsigned char* red, const unsigned char* green,
              const unsigned char* blue, const unsigned char* alpha, int width, int height);
// Copies the planes out into caller buffers of width * height bytes each.
// Returns 1, or 0 when the image is empty.
int GetPlanes(const PlanarImage& image, unsigned char* red, unsigned char* green, unsigned char* blue,
              unsigned char* alpha);

// Blends the image onto `dc` at (x, y) with the exact integer blend
// dst*(255-a) + src*a + 128, divided by 255 with rounding. -1 for width or
// height means the image's own; srcX/srcY pick the first source pixel and
// clipWidth/clipHeight limit the blended part. Returns 0 when the image has
// no alpha plane, 1 otherwise.
int DrawImage(const PlanarImage& image, HDC dc, int x, int y, int width = -1, int height = -1, int srcX = 0,
              int srcY = 0, int clipWidth = -1, int clipHeight = -1);

// A 24-bit bottom-up DIB section holding a copy of a screen rectangle while
// an image is blended into it, 3 bytes per pixel (blue, green, red). The
// header's image size counts `stride` pixels a row (the width rounded up to
// a multiple of 4); the rows themselves are `rowBytes` long, as GDI lays out
// a 24-bit DIB. Frees its bitmap on destruction.
struct ScreenPatch {
    HBITMAP bitmap = nullptr;
    unsigned char* bits = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;    // in pixels
    int rowBytes = 0;  // (width * 3) rounded up to 4 bytes

    ScreenPatch() = default;
    ~ScreenPatch();
    ScreenPatch(const ScreenPatch&) = delete;
    ScreenPatch& operator=(const ScreenPatch&) = delete;

    // Makes the section and copies the rectangle of `dc` into it.
    bool Capture(HDC dc, int x, int y, int w, int h);
    // Copies the section back to the same rectangle of `dc`.
    void Restore(HDC dc, int x, int y) const;
    unsigned char* Pixel(int column, int rowFromBottom) const {
        return bits + size_t(rowFromBottom) * size_t(rowBytes) + size_t(column) * 3;
    }
};
