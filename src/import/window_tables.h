#pragma once

#include "base/index.h"
#include "model/survey_model.h"

#include <cstddef>
#include <vector>

namespace keldrin {

/// What the readings of one window and component have been merged to.
struct MergedReading {
    float WinMag = MissingValue; ///< dB/dt, nV/(A m2)
    float WinVar = MissingValue; ///< variance, (nV/(A m2)) squared
    float WinWgt = MissingValue; ///< sum of weights
    bool WinSkip = false;        ///< true while every merged reading was skipped
};

/// Merged readings by sounding, component axis and window, for the length of a read pass.
class WindowTables {
  public:
    /// Allocates for `soundings` records. False when memory runs out.
    bool allocate(int soundings);

    /// sounding, axis, window from 0
    MergedReading &at(int sounding, int axis, int window) {
        return readings_[(asIndex(sounding) * ComponentAxes + asIndex(axis)) * MaxWindows +
                         asIndex(window)];
    }

  private:
    std::vector<MergedReading> readings_;
};

/// Merges a reading into a window by inverse-variance weights: w = 1 / (0.0001 + sigma^2). A
/// skipped reading weighs 1.0E-10 of that, so it fills a window but hardly moves a good one.
/// dBdt, sigma  nV/(A m2), at most LargestReading in size
inline constexpr float LargestReading = 1.0E18F;
void mergeReading(MergedReading &merged, float dBdt, float sigma, bool skip);

/// Merges a reading that carries no error: the plain mean of all readings of the window.
void averageReading(MergedReading &merged, float dBdt);

/// The window of a centre time in a record: the first within 100 spacings of it, else a new one.
/// index    0-based
/// returns  Full when the record holds 128 windows already; the record is then unchanged
FindOrAdd TW_Find_Or_Add(SoundingRecord &record, float center, int &index);

/// Takes the windows without a usable reading out of a record and its tables; the others keep their
/// order. Usable is any component for Fixed- and Moving-Loop, the Z component for the others.
void dropEmptyWindows(SoundingRecord &record, int sounding, int arrayIndex, WindowTables &tables);

/// Sets TEMobs, TEMerr and the component weights of every window from its merged components: the
/// vector magnitude for Fixed- and Moving-Loop, the signed Z component for the others.
void finishWindows(SoundingRecord &record, int sounding, int arrayIndex, WindowTables &tables);

} // namespace keldrin
