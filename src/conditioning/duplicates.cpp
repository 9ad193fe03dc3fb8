#include "conditioning/duplicates.h"

#include "base/number_text.h"
#include "base/sorting.h"
#include "messages/message_log.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

/// One window of one reading.
struct WindowRow {
    float time = 0.0F;
    float width = 0.0F;
    float value = 0.0F;
    float squaredError = 0.0F;
    std::array<float, ComponentAxes> weights{};
};

double singleKey(double station) {
    return static_cast<double>(static_cast<float>(station));
}

std::vector<WindowRow> gatherWindows(std::span<const SoundingRecord> readings) {
    std::vector<WindowRow> rows;
    for (const SoundingRecord &record : readings) {
        for (std::size_t w = 0; w < windowCount(record); ++w) {
            if (record.TEMobs[w] >= -1.0E30F && record.TEMobs[w] <= 1.0E30F) {
                // The stored error, skip offset and all, is what counts here.
                rows.push_back({record.TWcenter[w], record.TWwidth[w], record.TEMobs[w],
                                record.TEMerr[w] * record.TEMerr[w], record.TEMwgt[w]});
            }
        }
    }
    return rows;
}

void sortByTime(std::vector<WindowRow> &rows) {
    std::vector<float> times;
    times.reserve(rows.size());
    for (const WindowRow &row : rows) {
        times.push_back(row.time);
    }
    permuteByIndex(std::span(rows), indexSort(times));
}

float weightOf(const WindowRow &row) {
    return 1.0F / std::max(1.0F, row.squaredError);
}

// Folds sorted rows into windows; a chain of times is compared with the window's first time.
std::vector<WindowRow> foldWindows(const std::vector<WindowRow> &rows) {
    std::vector<WindowRow> windows;
    float lastTime = MissingValue;
    float sum = 0.0F; // of the weights of the current window
    for (const WindowRow &row : rows) {
        if (!(row.time > 0.0F)) {
            continue;
        }
        const float weight = weightOf(row);
        if (windows.empty() || std::fabs(row.time - lastTime) / row.time > 0.001F) {
            lastTime = row.time;
            windows.push_back(row);
            sum = weight;
            continue;
        }
        WindowRow &window = windows.back();
        window.value = (window.value * sum + row.value * weight) / (sum + weight);
        window.squaredError =
            (window.squaredError * sum + row.squaredError * weight) / (sum + weight);
        sum += weight;
    }
    return windows;
}

void warnOfDroppedWindows(const SoundingRecord &record) {
    ReportWarning({"MergeTransients.WARNING: More than " + std::to_string(MaxWindows) +
                       " time windows at Tx.Stn=" + Number_Text(record.TxStn, "(F14.3)") +
                       ", Rx.Stn=" + Number_Text(record.RxStn, "(F14.3)"),
                   "Excess windows will be dropped."});
}

void fillMissingKeys(SurveyModel &model) {
    for (SoundingRecord &record : model.soundings()) {
        if (!isPresent(record.RxStn)) {
            record.RxStn = record.Station;
        }
        if (!isPresent(record.TxStn)) {
            record.TxStn = record.RxStn;
        }
    }
}

bool startsGroup(const SoundingRecord &record, double groupTx, double groupRx) {
    return !sameStation(record.TxStn, groupTx) || !sameStation(record.RxStn, groupRx);
}

} // namespace

void SortByTxRx(SurveyModel &model) {
    const std::span<SoundingRecord> soundings = model.soundings();
    if (soundings.size() < 2) {
        return;
    }
    ReportInfoLine("Sorting soundings low-to-high by (TxStn,RxStn)");
    std::array<std::vector<double>, 2> keys;
    for (const SoundingRecord &record : soundings) {
        keys[0].push_back(singleKey(record.TxStn));
        keys[1].push_back(singleKey(record.RxStn));
    }
    std::vector<std::size_t> index = indexSortByKeys(keys);
    ReportInfoLine("  Reordering sorted data");
    permuteByIndex(soundings, std::move(index));
    model.keyIndex.clear();
}

int MergeTransients(SoundingRecord &record, std::span<const SoundingRecord> readings) {
    std::vector<WindowRow> rows = gatherWindows(readings);
    sortByTime(rows);
    const std::vector<WindowRow> windows = foldWindows(rows);
    record = readings.front();
    const std::size_t kept = std::min<std::size_t>(windows.size(), MaxWindows);
    if (kept < windows.size()) {
        warnOfDroppedWindows(record);
    }
    record.NumTW = static_cast<int>(kept);
    for (std::size_t w = 0; w < kept; ++w) {
        record.TWcenter[w] = windows[w].time;
        record.TWwidth[w] = windows[w].width;
        record.TEMobs[w] = windows[w].value;
        record.TEMerr[w] = std::sqrt(windows[w].squaredError);
        record.TEMwgt[w] = windows[w].weights;
    }
    return 0;
}

int AverageDuplicateTransients(SurveyModel &model) {
    const int before = model.SoundingCount;
    const std::span<SoundingRecord> readings = model.soundings();
    fillMissingKeys(model);
    SortByTxRx(model);
    ReportInfoLine("Averaging duplicate transients data.");
    std::vector<std::size_t> firsts;
    double groupTx = MissingValue;
    double groupRx = MissingValue;
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (firsts.empty() || startsGroup(readings[i], groupTx, groupRx)) {
            firsts.push_back(i);
            groupTx = readings[i].TxStn;
            groupRx = readings[i].RxStn;
        }
    }
    model.SoundingCount = static_cast<int>(firsts.size());
    model.keyIndex.clear();
    firsts.push_back(readings.size());
    for (std::size_t group = 0; group + 1 < firsts.size(); ++group) {
        const std::size_t first = firsts[group];
        MergeTransients(readings[group], readings.subspan(first, firsts[group + 1] - first));
    }
    ReportInfoLine(model.SoundingCount < before
                       ? "Averaging reduced # transients from " + std::to_string(before) + " to " +
                             std::to_string(model.SoundingCount)
                       : std::string("No duplicate data found."));
    return 0;
}

} // namespace keldrin
