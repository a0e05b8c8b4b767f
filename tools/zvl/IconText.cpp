#include "tools/zvl/IconText.h"

#include <cctype>
#include <cstdlib>
#include <map>
#include <sstream>
#include <vector>

#include "tools/zvl/ZvlConsole.h"

namespace {

struct Color {
    unsigned char r = 0, g = 0, b = 0, a = 0;
};

using Grid = std::vector<std::string>;

std::string Trim(const std::string& s) {
    size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) return std::string();
    size_t e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

bool ParseHex(const std::string& text, Color& color) {
    size_t at = !text.empty() && text[0] == '#' ? 1 : 0;
    if (text.size() - at != 6 && text.size() - at != 8) return false;
    unsigned v[4] = {0, 0, 0, 255};
    for (size_t i = 0; i < (text.size() - at) / 2; ++i) {
        std::string part = text.substr(at + i * 2, 2);
        char* end = nullptr;
        v[i] = (unsigned)strtoul(part.c_str(), &end, 16);
        if (!isxdigit((unsigned char)part[0]) || !end || *end) return false;
    }
    color = {(unsigned char)v[0], (unsigned char)v[1], (unsigned char)v[2], (unsigned char)v[3]};
    return true;
}

// Scale2x on keys: each pixel becomes four, taking a neighbour's key where
// two neighbours agree across a corner.
Grid Scale2x(const Grid& in) {
    int n = (int)in.size();
    Grid out(n * 2, std::string(n * 2, ' '));
    auto at = [&](int x, int y) {
        x = x < 0 ? 0 : (x >= n ? n - 1 : x);
        y = y < 0 ? 0 : (y >= n ? n - 1 : y);
        return in[y][x];
    };
    for (int y = 0; y < n; ++y) {
        for (int x = 0; x < n; ++x) {
            char p = at(x, y), a = at(x, y - 1), b = at(x + 1, y), c = at(x - 1, y), d = at(x, y + 1);
            out[y * 2][x * 2] = (c == a && c != d && a != b) ? a : p;
            out[y * 2][x * 2 + 1] = (a == b && a != c && b != d) ? b : p;
            out[y * 2 + 1][x * 2] = (d == c && d != b && c != a) ? c : p;
            out[y * 2 + 1][x * 2 + 1] = (b == d && b != a && d != c) ? d : p;
        }
    }
    return out;
}

bool CheckGrid(const Grid& grid, const std::map<char, Color>& palette, std::wstring& error) {
    if (grid.empty()) {
        error = L"icon has no pixels";
        return false;
    }
    for (size_t y = 0; y < grid.size(); ++y) {
        if (grid[y].size() != grid.size()) {
            error = L"icon row " + std::to_wstring(y + 1) + L" has " + std::to_wstring(grid[y].size()) +
                    L" pixels; the grid must be square (" + std::to_wstring(grid.size()) + L")";
            return false;
        }
        for (char key : grid[y]) {
            if (!palette.count(key)) {
                error = L"icon row " + std::to_wstring(y + 1) + L" uses the key '" + std::wstring(1, (wchar_t)key) +
                        L"' that is not in its colors";
                return false;
            }
        }
    }
    return true;
}

}  // namespace

bool RenderIconText(const std::string& utf8, int size, PlanarImage& image, std::wstring& error) {
    std::map<char, Color> palette;
    Grid small, large;
    Grid* target = nullptr;
    bool inColors = false;
    std::istringstream in(utf8);
    std::string raw;
    int lineNumber = 0;
    while (std::getline(in, raw)) {
        ++lineNumber;
        std::string line = Trim(raw);
        if (lineNumber == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line = Trim(line.substr(3));
        if (line.empty() || line[0] == '#') continue;
        if (line == "colors:" || line == "colors" || line == "palette" || line == "palette:") {
            inColors = true;
            target = nullptr;
            continue;
        }
        if (line == "pixels:" || line == "pixels" || line == "pixels 32:") {
            inColors = false;
            target = line == "pixels 32:" ? &large : &small;
            continue;
        }
        if (inColors) {
            std::string key = line.substr(0, 1);
            std::string value = Trim(line.substr(1));
            Color color;
            if (value == "none") {
                color = Color{};
            } else if (!ParseHex(value, color)) {
                error = L"line " + std::to_wstring(lineNumber) + L": a color is none, RRGGBB or RRGGBBAA (with or without #)";
                return false;
            }
            palette[key[0]] = color;
        } else if (target) {
            target->push_back(line);
        } else {
            error = L"line " + std::to_wstring(lineNumber) + L": expected colors: or pixels:";
            return false;
        }
    }
    if (!CheckGrid(small, palette, error)) return false;
    if (!large.empty() && !CheckGrid(large, palette, error)) return false;
    const Grid* grid = nullptr;
    Grid doubled;
    if ((int)small.size() == size) {
        grid = &small;
    } else if ((int)large.size() == size) {
        grid = &large;
    } else if ((int)small.size() * 2 == size) {
        doubled = Scale2x(small);
        grid = &doubled;
    } else {
        error = L"icon is " + std::to_wstring(small.size()) + L" pixels wide; cannot make " + std::to_wstring(size);
        return false;
    }
    if (!image.Allocate(size, size)) {
        error = L"out of memory";
        return false;
    }
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const Color& c = palette[(*grid)[y][x]];
            int i = y * size + x;
            image.red[i] = c.r;
            image.green[i] = c.g;
            image.blue[i] = c.b;
            image.alpha[i] = c.a;
        }
    }
    return true;
}
