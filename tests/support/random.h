// Numbers that look random and are the same for a seed on every machine and compiler.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nodeline::test {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        state_ += 0x9e3779b97f4a7c15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    // From 0 to `count` - 1; `count` is positive.
    int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool OneIn(int count) { return Below(count) == 0; }
    // From 0 to 1, with all the digits a double has.
    double Unit() { return static_cast<double>(Next() >> 11) / 9007199254740992.0; }
    double Real(double low, double high) { return low + Unit() * (high - low); }

    template <class T>
    const T& Of(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
    }

private:
    std::uint64_t state_;
};

}  // namespace nodeline::test
