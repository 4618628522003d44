#include "frontend/expansion/tuples.h"

#include <algorithm>
#include <cstdint>

namespace orvex::frontend {

namespace {

constexpr std::size_t first_size = 16;

// FNV-1a over the numbers of the elements.
std::uint64_t hash_of(std::span<const Index> tuple) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const Index element : tuple) hash = (hash ^ element) * 0x100000001B3U;
    return hash ^ (hash >> 32U);
}

}  // namespace

Tuples::Tuples(std::size_t width) : width_(width), slots_(first_size, no_index) {}

std::span<const Index> Tuples::tuple(Index number) const {
    return std::span(elements_).subspan(number * width_, width_);
}

std::size_t Tuples::slot_of(std::span<const Index> tuple) const {
    std::size_t slot = hash_of(tuple) & (slots_.size() - 1);
    while (slots_[slot] != no_index) {
        const std::span<const Index> other = this->tuple(slots_[slot]);
        if (std::equal(tuple.begin(), tuple.end(), other.begin(), other.end())) break;
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

Index Tuples::find(std::span<const Index> tuple) const { return slots_[slot_of(tuple)]; }

Index Tuples::add(std::span<const Index> tuple) {
    const std::size_t slot = slot_of(tuple);
    if (slots_[slot] != no_index) return slots_[slot];
    const Index number = size_++;
    slots_[slot] = number;
    elements_.insert(elements_.end(), tuple.begin(), tuple.end());
    if (std::size_t{2} * size_ > slots_.size()) grow();
    return number;
}

void Tuples::grow() {
    slots_.assign(2 * slots_.size(), no_index);
    for (Index number = 0; number < size_; ++number) slots_[slot_of(tuple(number))] = number;
}

}  // namespace orvex::frontend
