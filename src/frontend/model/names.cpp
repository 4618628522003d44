#include "frontend/model/names.h"

#include "frontend/syntax/reading.h"
#include "notation/records.h"

#include <algorithm>
#include <cstdint>

namespace orvex::frontend {

namespace {

constexpr std::size_t first_size = 256;

// FNV-1a over the text as it is read.
std::uint64_t hash_of(std::string_view name) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(notation::as_read(c))) * 0x100000001B3U;
    }
    return hash ^ (hash >> 32U);
}

}  // namespace

NameTable::NameTable() : slots_(first_size, no_index) {}

std::size_t NameTable::slot_of(std::string_view name) const {
    std::size_t slot = hash_of(name) & (slots_.size() - 1);
    while (slots_[slot] != no_index && !same_when_read(texts_[slots_[slot]], name))
        slot = (slot + 1) & (slots_.size() - 1);
    return slot;
}

Index NameTable::find(std::string_view name) const { return slots_[slot_of(name)]; }

Index NameTable::add(std::string_view name) {
    const std::size_t slot = slot_of(name);
    if (slots_[slot] != no_index) return slots_[slot];
    const Index number = size();
    slots_[slot] = number;
    texts_.push_back(capitals(name));
    if (2 * texts_.size() > slots_.size()) grow();
    return number;
}

void NameTable::grow() {
    slots_.assign(2 * slots_.size(), no_index);
    for (Index number = 0; number < size(); ++number) slots_[slot_of(texts_[number])] = number;
}

}  // namespace orvex::frontend
