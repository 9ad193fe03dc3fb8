#include "model/sounding_index.h"

#include "base/index.h"
#include "base/real.h"

#include <bit>
#include <cmath>

namespace keldrin {

void SoundingIndex::clear() {
    heads_.clear();
    cells_.clear();
    next_.clear();
}

void SoundingIndex::add(double tx, double rx) {
    const int sounding = size();
    cells_.push_back(0);
    next_.push_back(-1);
    link(sounding, cellOf(placeOf(tx), placeOf(rx)));
}

void SoundingIndex::move(int sounding, double tx, double rx) {
    const Cell cell = cellOf(placeOf(tx), placeOf(rx));
    if (cell != cells_[asIndex(sounding)]) {
        unlink(sounding);
        link(sounding, cell);
    }
}

// Never falls as the station rises, and does not depend on how the processor treats denormals.
std::uint32_t SoundingIndex::placeOf(double station) {
    constexpr double Least = 1.0E-30;
    constexpr double Largest = 1.0E38;
    if (std::fabs(station) < Least) {
        return 0;
    }
    return std::bit_cast<std::uint32_t>(static_cast<float>(limited(station, -Largest, Largest)));
}

void SoundingIndex::link(int sounding, Cell cell) {
    const std::size_t place = asIndex(sounding);
    const auto [head, isNew] = heads_.try_emplace(cell, sounding);
    next_[place] = isNew ? -1 : head->second;
    cells_[place] = cell;
    head->second = sounding;
}

void SoundingIndex::unlink(int sounding) {
    const std::size_t place = asIndex(sounding);
    int *link = &heads_.at(cells_[place]);
    while (*link != sounding) {
        link = &next_[asIndex(*link)];
    }
    *link = next_[place];
}

} // namespace keldrin
