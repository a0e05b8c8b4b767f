#!/usr/bin/env python3
"""Converts Zorvel's text pixel art into the image files the resource
modules embed.

An art source is a text file: a palette, then one line of characters per
pixel row. Every character of the grid must be in the palette.

    # comment
    palette
    . none              fully transparent
    k 1e2a3a            opaque colour (rrggbb)
    s 00000060          colour with alpha (rrggbbaa)
    pixels
    ..kkkk..
    .ksssk..

Commands (all write exactly one file and fail with a message and exit
status 1 on any fault in a source):

    tga OUT SRC
        32-bit uncompressed TGA (type 2) with alpha, rows stored top first.
        The descriptor is 0x18: 8 alpha bits, and bit 4 set as the mark of
        top-first rows for the program's decoder (bit 5 stays clear).
    bmp OUT [--key RRGGBB] [--matte RRGGBB] [--cell N] SRC [SRC ...]
        24-bit BMP; several sources of equal height make a horizontal strip
        (with --cell, each source is first centred in an N x N cell).
        Transparent pixels take the key colour (without --key the art must be
        opaque); no other pixel may come out as the key colour. Partly
        transparent pixels are blended onto the matte colour (default: the
        key colour).
    ico OUT SRC [SRC ...]
        Windows icon with one 32-bit image per source (e.g. 16, 32, 48 px).
    png OUT [--scale N] [--bg RRGGBB] SRC [SRC ...]
        Enlarged preview strip for looking at the art (checkerboard when no
        background is given).
    showtga OUT.png [--scale N] IN.tga
        Decodes a TGA by the program's rules (bit 4 = top-first rows) and
        writes an enlarged PNG preview.
    stamp OUT FILE [FILE ...]
        A header holding a digest of the given files, so that a resource
        script including it is rebuilt when any of them changes.
"""

import hashlib
import struct
import sys
import zlib


class ArtError(Exception):
    pass


def parse_hex_colour(text, where):
    text = text.lstrip("#")
    if len(text) not in (6, 8):
        raise ArtError("%s: colour %r must be rrggbb or rrggbbaa" % (where, text))
    try:
        value = int(text, 16)
    except ValueError:
        raise ArtError("%s: colour %r is not hexadecimal" % (where, text))
    if len(text) == 6:
        return ((value >> 16) & 255, (value >> 8) & 255, value & 255, 255)
    return ((value >> 24) & 255, (value >> 16) & 255, (value >> 8) & 255, value & 255)


class Image:
    def __init__(self, width, height, pixels, name):
        self.width = width
        self.height = height
        self.pixels = pixels  # row-major, top row first, (r, g, b, a)
        self.name = name

    def pixel(self, x, y):
        return self.pixels[y * self.width + x]


def load_art(path):
    try:
        with open(path, encoding="utf-8") as f:
            lines = f.read().splitlines()
    except OSError as e:
        raise ArtError("%s: cannot read (%s)" % (path, e.strerror))
    palette = {}
    rows = []
    section = None
    for number, raw in enumerate(lines, 1):
        where = "%s:%d" % (path, number)
        line = raw.rstrip()
        if section != "pixels":
            stripped = line.strip()
            if not stripped or stripped.startswith("#"):
                continue
            if stripped in ("palette", "pixels"):
                section = stripped
                continue
            if section != "palette":
                raise ArtError("%s: expected 'palette' before %r" % (where, stripped))
            parts = stripped.split()
            if len(parts) < 2 or len(parts[0]) != 1:
                raise ArtError("%s: palette line must be 'CHAR COLOUR'" % where)
            char, colour = parts[0], parts[1]
            if char in palette:
                raise ArtError("%s: palette character %r defined twice" % (where, char))
            palette[char] = (0, 0, 0, 0) if colour == "none" else parse_hex_colour(colour, where)
            continue
        if not line or line.lstrip().startswith("#"):
            if rows and not line:
                break  # a blank line ends the grid
            continue
        rows.append((where, line))
    if not rows:
        raise ArtError("%s: no pixel rows" % path)
    width = len(rows[0][1])
    pixels = []
    for where, row in rows:
        if len(row) != width:
            raise ArtError("%s: row has %d pixels, the first row %d" % (where, len(row), width))
        for column, char in enumerate(row):
            if char not in palette:
                raise ArtError("%s: column %d: %r is not in the palette" % (where, column + 1, char))
            pixels.append(palette[char])
    return Image(width, len(rows), pixels, path)


def tga_bytes(image):
    header = struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0,
                         image.width, image.height, 32, 0x18)
    body = bytearray()
    for r, g, b, a in image.pixels:  # already top row first
        body += bytes((b, g, r, a))
    return header + bytes(body)


def blend(pixel, matte):
    r, g, b, a = pixel
    return tuple((c * a + m * (255 - a) + 127) // 255 for c, m in zip((r, g, b), matte))


def centred(image, size):
    if image.width > size or image.height > size:
        raise ArtError("%s: %dx%d does not fit a %d-pixel cell" % (image.name, image.width, image.height, size))
    left, top = (size - image.width) // 2, (size - image.height) // 2
    pixels = [(0, 0, 0, 0)] * (size * size)
    for y in range(image.height):
        for x in range(image.width):
            pixels[(top + y) * size + left + x] = image.pixel(x, y)
    return Image(size, size, pixels, image.name)


def strip_of(images):
    height = images[0].height
    for image in images:
        if image.height != height:
            raise ArtError("%s: height %d differs from %d of %s" % (image.name, image.height, height, images[0].name))
    width = sum(image.width for image in images)
    pixels = []
    for y in range(height):
        for image in images:
            pixels.extend(image.pixels[y * image.width:(y + 1) * image.width])
    return Image(width, height, pixels, images[0].name)


def bmp_bytes(image, key, matte):
    stride = (image.width * 3 + 3) & ~3
    body = bytearray()
    for y in range(image.height - 1, -1, -1):  # BMP rows run bottom up
        row = bytearray()
        for x in range(image.width):
            pixel = image.pixel(x, y)
            if pixel[3] == 0:
                if key is None:
                    raise ArtError("%s: pixel (%d,%d) is transparent and no --key is given" % (image.name, x, y))
                r, g, b = key
            else:
                r, g, b = blend(pixel, matte)
                if key is not None and (r, g, b) == tuple(key):
                    raise ArtError("%s: pixel (%d,%d) equals the key colour" % (image.name, x, y))
            row += bytes((b, g, r))
        row += bytes(stride - len(row))
        body += row
    info = struct.pack("<IiiHHIIiiII", 40, image.width, image.height, 1, 24, 0, len(body), 3780, 3780, 0, 0)
    file_header = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(body), 0, 0, 14 + len(info))
    return file_header + info + bytes(body)


def ico_bytes(images):
    entries = bytearray()
    blobs = []
    offset = 6 + 16 * len(images)
    for image in images:
        if image.width > 256 or image.height > 256:
            raise ArtError("%s: icons are at most 256 pixels" % image.name)
        xor = bytearray()
        mask_stride = ((image.width + 31) // 32) * 4
        mask = bytearray()
        for y in range(image.height - 1, -1, -1):
            bits = bytearray(mask_stride)
            for x in range(image.width):
                r, g, b, a = image.pixel(x, y)
                xor += bytes((b, g, r, a))
                if a == 0:
                    bits[x // 8] |= 0x80 >> (x % 8)
            mask += bits
        info = struct.pack("<IiiHHIIiiII", 40, image.width, image.height * 2, 1, 32, 0,
                           len(xor) + len(mask), 0, 0, 0, 0)
        blob = info + bytes(xor) + bytes(mask)
        entries += struct.pack("<BBBBHHII", image.width % 256, image.height % 256, 0, 0, 1, 32, len(blob), offset)
        offset += len(blob)
        blobs.append(blob)
    return struct.pack("<HHH", 0, 1, len(images)) + bytes(entries) + b"".join(blobs)


def png_bytes(width, height, rgb_rows):
    raw = bytearray()
    for row in rgb_rows:
        raw.append(0)
        raw += row

    def chunk(tag, data):
        return struct.pack(">I", len(data)) + tag + data + struct.pack(">I", zlib.crc32(tag + data) & 0xFFFFFFFF)

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


def preview(image, scale, background):
    rows = []
    for y in range(image.height):
        for sy in range(scale):
            row = bytearray()
            for x in range(image.width):
                pixel = image.pixel(x, y)
                for sx in range(scale):
                    if background is None:
                        light = ((x * scale + sx) // 4 + (y * scale + sy) // 4) % 2
                        under = (204, 204, 204) if light else (153, 153, 153)
                    else:
                        under = background
                    row += bytes(blend(pixel, under))
            rows.append(row)
    return png_bytes(image.width * scale, image.height * scale, rows)


def decode_tga(path):
    with open(path, "rb") as f:
        data = f.read()
    if len(data) < 18:
        raise ArtError("%s: shorter than a TGA header" % path)
    id_length, map_type, kind = data[0], data[1], data[2]
    width, height = struct.unpack_from("<HH", data, 12)
    bits, descriptor = data[16], data[17]
    if map_type != 0 or kind != 2:
        raise ArtError("%s: only uncompressed true-colour TGA is shown" % path)
    size = 4 if bits == 32 else 3
    offset = 18 + id_length
    pixels = [None] * (width * height)
    for i in range(width * height):
        b, g, r = data[offset], data[offset + 1], data[offset + 2]
        a = data[offset + 3] if size == 4 else 255
        offset += size
        row, column = divmod(i, width)
        if not descriptor & 0x10:
            row = height - 1 - row
        pixels[row * width + column] = (r, g, b, a)
    return Image(width, height, pixels, path)


def take_option(args, name, default=None):
    if name in args:
        i = args.index(name)
        if i + 1 >= len(args):
            raise ArtError("%s needs a value" % name)
        value = args[i + 1]
        del args[i:i + 2]
        return value
    return default


def write(path, data):
    with open(path, "wb") as f:
        f.write(data)


def main(argv):
    if len(argv) < 3:
        print(__doc__)
        return 1
    command, out, args = argv[1], argv[2], list(argv[3:])
    if command == "tga":
        if len(args) != 1:
            raise ArtError("tga takes one source")
        write(out, tga_bytes(load_art(args[0])))
    elif command == "bmp":
        key = take_option(args, "--key")
        key = parse_hex_colour(key, "--key")[:3] if key else None
        matte = take_option(args, "--matte")
        matte = parse_hex_colour(matte, "--matte")[:3] if matte else (key or (255, 255, 255))
        cell = take_option(args, "--cell")
        if not args:
            raise ArtError("bmp needs at least one source")
        images = [load_art(a) for a in args]
        if cell:
            images = [centred(i, int(cell)) for i in images]
        write(out, bmp_bytes(strip_of(images), key, matte))
    elif command == "ico":
        if not args:
            raise ArtError("ico needs at least one source")
        write(out, ico_bytes([load_art(a) for a in args]))
    elif command == "png":
        scale = int(take_option(args, "--scale", "8"))
        bg = take_option(args, "--bg")
        bg = parse_hex_colour(bg, "--bg")[:3] if bg else None
        images = [load_art(a) for a in args]
        height = max(i.height for i in images)
        padded = []
        for image in images:  # pad shorter images so that sizes can be mixed
            pixels = list(image.pixels) + [(0, 0, 0, 0)] * (image.width * (height - image.height))
            padded.append(Image(image.width, height, pixels, image.name))
            padded.append(Image(2, height, [(0, 0, 0, 0)] * (2 * height), image.name))
        write(out, preview(strip_of(padded), scale, bg))
    elif command == "showtga":
        scale = int(take_option(args, "--scale", "8"))
        write(out, preview(decode_tga(args[0]), scale, None))
    elif command == "stamp":
        digest = hashlib.sha1()
        for name in args:
            with open(name, "rb") as f:
                digest.update(f.read())
        write(out, ("// Generated: digest of the art files, so that resource scripts\n"
                    "// that include this header are rebuilt when the art changes.\n"
                    "// %s\n" % digest.hexdigest()).encode("ascii"))
    else:
        raise ArtError("unknown command %r" % command)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv))
    except ArtError as e:
        sys.stderr.write("artconv: %s\n" % e)
        sys.exit(1)
