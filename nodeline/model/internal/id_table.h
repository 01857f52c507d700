// A map from ids to values whose ids come in runs: pages of consecutive ids behind a directory.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace nodeline::internal {

// Lookup costs one probe of the directory, which spans the pages from the lowest to the highest id
// in use. Addresses of values are stable.
template <class T>
class IdTable {
public:
    // The value of `id`, made if absent.
    T& Get(int id) {
        Page& page = page_of(id);
        Slot& slot = page.slots[offset_of(id)];
        if (!slot.used) ++page.count;
        slot.used = true;
        return slot.value;
    }

    // The value of `id`, or null.
    T* Find(int id) {
        Page* page = find_page(id);
        if (page == nullptr) return nullptr;
        Slot& slot = page->slots[offset_of(id)];
        return slot.used ? &slot.value : nullptr;
    }

    // A page goes with its last entry: ids are not used again.
    void Erase(int id) {
        Page* page = find_page(id);
        if (page == nullptr) return;
        Slot& slot = page->slots[offset_of(id)];
        if (!slot.used) return;
        // What goes with the value may lead back here, so the table is in order by then.
        const Slot erased = std::exchange(slot, Slot());
        if (--page->count > 0) return;
        const auto place = static_cast<std::size_t>(number_of(id) - first_number_);
        const std::unique_ptr<Page> empty = std::move(pages_[place]);
    }

    // Calls `f(id, value)` for every entry, by rising id.
    template <class F>
    void ForEach(F f) {
        int number = first_number_;
        for (auto& page : pages_) {
            for (std::size_t i = 0; page && i < kPageSize; ++i) {
                Slot& slot = page->slots[i];
                if (slot.used)
                    f(number * static_cast<int>(kPageSize) + static_cast<int>(i), slot.value);
            }
            ++number;
        }
    }

private:
    static constexpr std::size_t kPageSize = 64;

    struct Slot {
        T value{};
        bool used = false;
    };
    struct Page {
        std::array<Slot, kPageSize> slots;
        std::size_t count = 0;  // of the slots in use
    };

    // Rounds towards minus infinity, so that every page holds consecutive ids.
    static int number_of(int id) {
        constexpr int kSize = static_cast<int>(kPageSize);
        return id >= 0 ? id / kSize : -1 - (-1 - id) / kSize;
    }
    static std::size_t offset_of(int id) { return static_cast<std::size_t>(id) & (kPageSize - 1); }

    Page* find_page(int id) {
        const std::ptrdiff_t place = std::ptrdiff_t{number_of(id)} - first_number_;
        if (place < 0 || place >= static_cast<std::ptrdiff_t>(pages_.size())) return nullptr;
        return pages_[static_cast<std::size_t>(place)].get();
    }

    Page& page_of(int id) {
        const int number = number_of(id);
        if (pages_.empty()) first_number_ = number;
        if (number < first_number_) {
            // Room grows as fast towards lower ids as a vector grows towards higher ones.
            const std::size_t missing = static_cast<std::size_t>(first_number_ - number);
            const std::size_t more = std::max(missing, pages_.size());
            std::vector<std::unique_ptr<Page>> grown(more + pages_.size());
            std::move(pages_.begin(), pages_.end(),
                      grown.begin() + static_cast<std::ptrdiff_t>(more));
            pages_ = std::move(grown);
            first_number_ -= static_cast<int>(more);
        }
        if (number - first_number_ >= static_cast<int>(pages_.size())) drop_empty_start();
        const auto place = static_cast<std::size_t>(number - first_number_);
        if (place >= pages_.size()) pages_.resize(place + 1);
        if (!pages_[place]) pages_[place] = std::make_unique<Page>();
        return *pages_[place];
    }

    // As ids rise, the directory moves along with those in use.
    void drop_empty_start() {
        const auto first = std::find_if(pages_.begin(), pages_.end(),
                                        [](const auto& page) { return page != nullptr; });
        const auto empty = first - pages_.begin();
        if (empty <= static_cast<std::ptrdiff_t>(pages_.size() / 2)) return;
        pages_.erase(pages_.begin(), first);
        first_number_ += static_cast<int>(empty);
    }

    std::vector<std::unique_ptr<Page>> pages_;
    int first_number_ = 0;
};

}  // namespace nodeline::internal
