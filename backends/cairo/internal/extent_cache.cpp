#include <backends/cairo/internal/extent_cache.h>

#include <utility>

namespace nodeline::cairo {

const TextExtent* ExtentCache::Find(std::string_view text) {
    if (const auto young = young_.find(text); young != young_.end()) return &young->second;
    const auto old = old_.find(text);
    if (old == old_.end()) return nullptr;
    const TextExtent extent = old->second;
    old_bytes_ -= text.size();
    old_.erase(old);
    Insert(text, extent);
    return &young_.find(text)->second;
}

void ExtentCache::Insert(std::string_view text, const TextExtent& extent) {
    if (text.size() > kMaxBytes) return;
    if (young_.size() == kMaxTexts || young_bytes_ + text.size() > kMaxBytes) {
        old_ = std::exchange(young_, {});
        old_bytes_ = std::exchange(young_bytes_, 0);
    }
    young_.emplace(text, extent);
    young_bytes_ += text.size();
}

}  // namespace nodeline::cairo
