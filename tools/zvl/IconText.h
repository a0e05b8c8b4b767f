// Icons drawn as text: a palette of one-character keys and a square grid of
// them, so that the sample icons live in the repository as readable source.
//
//   # comment
//   palette
//   .  none              fully transparent
//   K  202020            opaque (a leading "#" is allowed)
//   s  40404080          with alpha 0x80
//   pixels
//   ....KKKK....         one line per row, one key per pixel
//
// This is the art format of resources/art. A second grid may follow
// "pixels 32:" for the large size; without it the
// large icon is the small one doubled with the Scale2x rule, which keeps
// diagonal edges smooth instead of stair-stepped.
#pragma once
#include <string>

#include "images/PlanarImage.h"

// Renders the icon text at `size` pixels per side (the grid's own size, or
// twice it). False with a reason in `error` when the text is malformed or
// the size cannot be made from it.
bool RenderIconText(const std::string& utf8, int size, PlanarImage& image, std::wstring& error);
