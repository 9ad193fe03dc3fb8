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

std::vector<WindowRow> gatherWindows(const SurveyModel &model, int first, int count) {
    std::vector<WindowRow> rows;
    for (int r = first; r < first + count; ++r) {
        const SoundingRecord &record = model.hTrn[static_cast<std::size_t>(r)];
        for (std::size_t w = 0; w < static_cast<std::size_t>(record.NumTW); ++w) {
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
    float sum = 0.0F; // of the weights of the window in hand
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
    for (int i = 0; i < model.SoundingCount; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
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
    const auto count = static_cast<std::size_t>(model.SoundingCount);
    if (model.SoundingCount < 2) {
        return;
    }
    ReportInfoLine("Sorting soundings low-to-high by (TxStn,RxStn)");
    std::array<std::vector<double>, 2> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys[0].push_back(singleKey(model.hTrn[i].TxStn));
        keys[1].push_back(singleKey(model.hTrn[i].RxStn));
    }
    std::vector<std::size_t> index = indexSortByKeys(keys);
    ReportInfoLine("  Reordering sorted data");
    permuteByIndex(std::span(model.hTrn).first(count), std::move(index));
    model.keyIndex.clear();
}

int MergeTransients(SurveyModel &model, int target, int first, int count) {
    std::vector<WindowRow> rows = gatherWindows(model, first, count);
    sortByTime(rows);
    const std::vector<WindowRow> windows = foldWindows(rows);
    SoundingRecord &record = model.hTrn[static_cast<std::size_t>(target)];
    record = model.hTrn[static_cast<std::size_t>(first)];
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
    fillMissingKeys(model);
    SortByTxRx(model);
    ReportInfoLine("Averaging duplicate transients data.");
    std::vector<int> firsts;
    double groupTx = MissingValue;
    double groupRx = MissingValue;
    for (int i = 0; i < before; ++i) {
        const SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        if (firsts.empty() || startsGroup(record, groupTx, groupRx)) {
            firsts.push_back(i);
            groupTx = record.TxStn;
            groupRx = record.RxStn;
        }
    }
    model.SoundingCount = static_cast<int>(firsts.size());
    model.keyIndex.clear();
    firsts.push_back(before);
    for (int g = 0; g < model.SoundingCount; ++g) {
        const auto place = static_cast<std::size_t>(g);
        MergeTransients(model, g, firsts[place], firsts[place + 1] - firsts[place]);
    }
    ReportInfoLine(model.SoundingCount < before
                       ? "Averaging reduced # transients from " + std::to_string(before) + " to " +
                             std::to_string(model.SoundingCount)
                       : std::string("No duplicate data found."));
    return 0;
}

} // namespace keldrin
