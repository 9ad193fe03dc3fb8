#include "import/window_tables.h"

#include "base/index.h"

#include <cmath>
#include <new>
#include <stdexcept>

namespace keldrin {

namespace {

constexpr float LeastError = 1.0F; // percent
constexpr float GreatestError = 500.0F;

// The relative error of a value in percent; the small term keeps a zero value from dividing by 0.
float percentError(float variance, float valueSquared) {
    return limited(100.0F * std::sqrt(variance) / std::sqrt(valueSquared + 0.0001F), LeastError,
                   GreatestError);
}

void storeWindow(SoundingRecord &record, std::size_t window, float value, float error, bool skip) {
    record.TEMobs[window] = value;
    record.TEMerr[window] = skip ? error + SkipOffset : error;
}

bool combinesComponents(int arrayIndex) {
    return arrayIndex == FixedLoop || arrayIndex == MovingLoop;
}

void mergeWeighted(MergedReading &merged, const MergedReading &reading) {
    if (!isPresent(merged.WinMag)) {
        merged = reading;
        return;
    }
    const float weight = reading.WinWgt;
    const float sum = merged.WinWgt + weight;
    if (!(sum > 0.0F)) { // both weights have vanished: the first reading stands
        return;
    }
    merged.WinMag = (merged.WinMag * merged.WinWgt + reading.WinMag * weight) / sum;
    merged.WinVar = (merged.WinVar * merged.WinWgt + reading.WinVar * weight) / sum;
    merged.WinWgt = sum;
    merged.WinSkip = merged.WinSkip && reading.WinSkip;
}

void finishMagnitude(SoundingRecord &record, int sounding, int window, WindowTables &tables) {
    float sumOfSquares = 0.0F;
    float sumOfVariances = 0.0F;
    int components = 0;
    bool skip = false;
    std::array<float, ComponentAxes> weights{};
    for (int axis = 0; axis < ComponentAxes; ++axis) {
        const MergedReading &reading = tables.at(sounding, axis, window);
        if (isPresent(reading.WinMag)) {
            sumOfSquares += reading.WinMag * reading.WinMag;
            sumOfVariances += reading.WinVar;
            ++components;
            skip = skip || reading.WinSkip;
            weights[asIndex(axis)] = 1.0F;
        }
    }
    if (components == 0) {
        return;
    }
    const std::size_t w = asIndex(window);
    record.TEMwgt[w] = weights;
    storeWindow(record, w, std::sqrt(sumOfSquares),
                percentError(sumOfVariances / static_cast<float>(components), sumOfSquares), skip);
}

void finishVertical(SoundingRecord &record, int sounding, int window, WindowTables &tables) {
    const std::size_t w = asIndex(window);
    record.TEMwgt[w] = {0.0F, 0.0F, 0.0F};
    const MergedReading &reading = tables.at(sounding, AxisZ, window);
    if (isPresent(reading.WinMag)) {
        record.TEMwgt[w][AxisZ] = 1.0F;
        storeWindow(record, w, reading.WinMag,
                    percentError(reading.WinVar, reading.WinMag * reading.WinMag), reading.WinSkip);
    }
}

} // namespace

bool WindowTables::allocate(int soundings) {
    try {
        readings_.assign(asIndex(soundings) * ComponentAxes * MaxWindows, {});
    } catch (const std::exception &) { // bad_alloc and length_error end here
        return false;
    }
    return true;
}

void mergeReading(MergedReading &merged, float dBdt, float sigma, bool skip) {
    const float variance = sigma * sigma;
    float weight = 1.0F / (0.0001F + variance);
    if (skip) {
        weight *= 1.0E-10F;
    }
    mergeWeighted(merged, {dBdt, variance, weight, skip});
}

void averageReading(MergedReading &merged, float dBdt) {
    mergeWeighted(merged, {dBdt, 0.0F, 1.0F, false});
}

FindOrAdd TW_Find_Or_Add(SoundingRecord &record, float center, int &index) {
    const float tolerance = 100.0F * spacing(center);
    for (index = 0; index < record.NumTW; ++index) {
        if (std::fabs(record.TWcenter[asIndex(index)] - center) < tolerance) {
            return FindOrAdd::Found;
        }
    }
    if (record.NumTW >= MaxWindows) {
        return FindOrAdd::Full;
    }
    record.TWcenter[asIndex(record.NumTW++)] = center;
    return FindOrAdd::Added;
}

void dropEmptyWindows(SoundingRecord &record, int sounding, int arrayIndex, WindowTables &tables) {
    const int firstAxis = combinesComponents(arrayIndex) ? 0 : AxisZ;
    int kept = 0;
    for (int window = 0; window < record.NumTW; ++window) {
        bool usable = false;
        for (int axis = firstAxis; axis < ComponentAxes; ++axis) {
            usable = usable || isPresent(tables.at(sounding, axis, window).WinMag);
        }
        if (!usable) {
            continue;
        }
        for (int axis = 0; axis < ComponentAxes; ++axis) {
            tables.at(sounding, axis, kept) = tables.at(sounding, axis, window);
        }
        const std::size_t from = asIndex(window);
        const std::size_t to = asIndex(kept++);
        record.TWcenter[to] = record.TWcenter[from];
        record.TWwidth[to] = record.TWwidth[from];
    }
    record.NumTW = kept;
}

void finishWindows(SoundingRecord &record, int sounding, int arrayIndex, WindowTables &tables) {
    const bool magnitude = combinesComponents(arrayIndex);
    for (int window = 0; window < record.NumTW; ++window) {
        if (magnitude) {
            finishMagnitude(record, sounding, window, tables);
        } else {
            finishVertical(record, sounding, window, tables);
        }
    }
}

} // namespace keldrin
