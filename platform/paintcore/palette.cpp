#include <paintcore/painter.h>

#include <cstddef>

namespace paintcore {
namespace {

bool IsInPalette(int index) { return index >= 0 && index < SysPalette::kSize; }

SysPalette& ProcessPalette() {
    static SysPalette palette;
    return palette;
}

}  // namespace

SysPalette::SysPalette() {
    colors_.fill(_color(0, 0, 0));
    Set(kBackground, _color(255, 255, 255));
}

const _color& SysPalette::operator[](int index) const {
    return colors_[IsInPalette(index) ? static_cast<std::size_t>(index) : 0];
}

void SysPalette::Set(int index, const _color& color) {
    if (IsInPalette(index)) colors_[static_cast<std::size_t>(index)] = color;
}

const SysPalette& GetSysPalette() { return ProcessPalette(); }

void SetSysPalette(const SysPalette& palette) { ProcessPalette() = palette; }

}  // namespace paintcore
