#pragma once

#include "base/index.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace keldrin {

/// Where soundings of given transmitter and receiver stations are, so that a search costs the same
/// in a short table and in a long one.
///
/// Both stations of a sounding, rounded to single precision, name its cell. Stations that count as
/// the same lie within a small part of the single spacing, so a search looks into one cell, rarely
/// into two or four; which sounding of a cell matches is for the caller to say.
class SoundingIndex {
  public:
    void clear();
    /// Soundings that the index knows: 0 to size() - 1.
    [[nodiscard]] int size() const { return static_cast<int>(cells_.size()); }
    /// Enters the next sounding.
    void add(double tx, double rx);
    /// Moves a sounding, numbered from 0, to its new keys.
    void move(int sounding, double tx, double rx);

    /// The first sounding for which `matches(number)` is true among those within `txReach` and
    /// `rxReach` of the stations, and perhaps some that are farther; -1 without one.
    /// txReach, rxReach  at most a few thousand 64-bit spacings of the station
    template <class Matches>
    [[nodiscard]] int find(double tx, double txReach, double rx, double rxReach,
                           Matches matches) const {
        const std::uint32_t txLow = placeOf(tx - txReach);
        const std::uint32_t txHigh = placeOf(tx + txReach);
        const std::uint32_t rxLow = placeOf(rx - rxReach);
        const std::uint32_t rxHigh = placeOf(rx + rxReach);
        int first = -1;
        const auto look = [&](Cell cell) {
            const auto found = heads_.find(cell);
            for (int i = found == heads_.end() ? -1 : found->second; i >= 0; i = after(i)) {
                if ((first < 0 || i < first) && matches(i)) {
                    first = i;
                }
            }
        };
        look(cellOf(txLow, rxLow));
        if (txHigh != txLow) {
            look(cellOf(txHigh, rxLow));
        }
        if (rxHigh != rxLow) {
            look(cellOf(txLow, rxHigh));
        }
        if (txHigh != txLow && rxHigh != rxLow) {
            look(cellOf(txHigh, rxHigh));
        }
        return first;
    }

  private:
    using Cell = std::uint64_t;

    static std::uint32_t placeOf(double station);
    static Cell cellOf(std::uint32_t tx, std::uint32_t rx) { return (Cell{tx} << 32U) | rx; }
    [[nodiscard]] int after(int sounding) const { return next_[asIndex(sounding)]; }
    void link(int sounding, Cell cell);
    void unlink(int sounding);

    std::unordered_map<Cell, int> heads_; ///< a sounding of each cell
    std::vector<Cell> cells_;             ///< of each sounding
    std::vector<int> next_;               ///< another sounding of the same cell, -1 at the end
};

} // namespace keldrin
