#include "conditioning/auto_skip.h"

#include "messages/message_log.h"
#include "toolkit/control_ids.h"
#include "toolkit/drawing.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace keldrin {

namespace {

constexpr int FirstField = 1085;
constexpr int LastField = 1086;
constexpr int WindowCountText = 3086; // behind the last window
constexpr int CutoffField = 1051;
constexpr float LeastCutoff = 0.1F; // percent
constexpr float LargestCutoff = 10000.0F;

struct SwitchField {
    int id;
    bool AutoSkipSettings::*on;
};
constexpr std::array SwitchFields = {SwitchField{1087, &AutoSkipSettings::errorFilter},
                                     SwitchField{1088, &AutoSkipSettings::negativeFilter},
                                     SwitchField{1089, &AutoSkipSettings::slopeFilter}};

/// What has happened so far in one sounding. Each mark stays once it is set.
struct StickyMarks {
    bool error = false;
    bool slope = false;
};

void filterSounding(SoundingRecord &record, const AutoSkipSettings &settings, float cutoff,
                    AutoSkipCounts &counts) {
    StickyMarks marks;
    const int windows = limited(record.NumTW, 0, MaxWindows);
    for (int number = 1; number <= windows; ++number) {
        const auto i = static_cast<std::size_t>(number - 1);
        const float error = trueError(record.TEMerr[i]);
        if (number < settings.firstWindow || number > settings.lastWindow) {
            record.TEMerr[i] = error + SkipOffset;
            ++counts.outsideRange;
            ++counts.skipped;
            continue;
        }
        const bool negative = settings.negativeFilter && record.TEMobs[i] <= 0.0F;
        marks.error = marks.error || (settings.errorFilter && error > cutoff);
        // The window before counts even when it was skipped itself.
        const bool rising = number > std::max(settings.firstWindow, 1) &&
                            record.TEMobs[i] - record.TEMobs[i - 1] >= 0.0F && error > 1.0F;
        marks.slope = marks.slope || (settings.slopeFilter && rising);
        const bool skip = negative || marks.error || marks.slope;
        record.TEMerr[i] = skip ? error + SkipOffset : error;
        counts.negative += negative ? 1 : 0;
        counts.error += marks.error ? 1 : 0;
        counts.slope += marks.slope ? 1 : 0;
        counts.skipped += skip ? 1 : 0;
    }
    counts.windows += windows;
}

void logCounts(const AutoSkipCounts &counts) {
    const auto tell = [](const char *filter, int windows) {
        ReportInfoLine("Windows taken by the " + std::string(filter) + ": " +
                       std::to_string(windows));
    };
    tell("window range", counts.outsideRange);
    tell("error filter", counts.error);
    tell("negative filter", counts.negative);
    tell("slope filter", counts.slope);
}

int largestWindowCount(const SurveyModel &model) {
    int largest = 0;
    for (int i = 0; i < model.SoundingCount; ++i) {
        largest = std::max(largest, model.hTrn[static_cast<std::size_t>(i)].NumTW);
    }
    return largest;
}

void fillDialog(int maxWindows, const AutoSkipSettings &settings, float cutoff) {
    const int highest = std::max(maxWindows, 1);
    WDialogRangeInteger(FirstField, 1, highest);
    WDialogRangeInteger(LastField, 1, highest);
    WDialogPutInteger(FirstField, settings.firstWindow);
    WDialogPutInteger(LastField, settings.lastWindow);
    WDialogPutString(WindowCountText, "of " + std::to_string(maxWindows));
    for (const SwitchField &field : SwitchFields) {
        WDialogPutCheckBox(field.id, settings.*field.on);
    }
    WDialogRangeReal(CutoffField, LeastCutoff, LargestCutoff);
    WDialogPutReal(CutoffField, cutoff, "(F12.1)");
}

// A field that cannot be read keeps its value.
void readDialog(AutoSkipSettings &settings, float &cutoff) {
    WDialogGetInteger(FirstField, settings.firstWindow);
    WDialogGetInteger(LastField, settings.lastWindow);
    for (const SwitchField &field : SwitchFields) {
        WDialogGetCheckBox(field.id, settings.*field.on);
    }
    WDialogGetReal(CutoffField, cutoff);
}

void clearRootWindow() {
    ToolkitClearPage();
    ToolkitPageKind("blank");
}

} // namespace

AutoSkipCounts applyAutoSkip(SurveyModel &model, const AutoSkipSettings &settings) {
    AutoSkipCounts counts;
    for (int i = 0; i < model.SoundingCount; ++i) {
        filterSounding(model.hTrn[static_cast<std::size_t>(i)], settings, model.control.DataCutoff,
                       counts);
    }
    return counts;
}

int VerifyAutoSkip(int maxWindows, AutoSkipSettings &settings, float &DataCutoff) {
    CheckGraphicsError();
    AutoSkipSettings shown = settings; // what the limits change becomes a setting at Continue only
    if (shown.firstWindow > shown.lastWindow) {
        std::swap(shown.firstWindow, shown.lastWindow);
    }
    shown.firstWindow = std::max(std::min(shown.firstWindow, maxWindows), 1);
    shown.lastWindow = std::max(std::min(shown.lastWindow, maxWindows), 1);
    float cutoff = limited(DataCutoff, LeastCutoff, LargestCutoff);
    WDialogLoad(Dialog::AutoSkip);
    fillDialog(maxWindows, shown, cutoff);
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    const bool confirmed = ToolkitDialogInfo(1) == ButtonContinue;
    if (confirmed) {
        readDialog(shown, cutoff);
        settings = shown;
        DataCutoff = cutoff;
    }
    WDialogUnload();
    return confirmed ? 0 : 1;
}

int AutoSkip(SurveyModel &model, AutoSkipSettings &settings) {
    clearRootWindow();
    if (model.SoundingCount < 1) {
        ReportError({"ERROR: No valid data present."});
        return 1;
    }
    const int status =
        VerifyAutoSkip(largestWindowCount(model), settings, model.control.DataCutoff);
    if (status != 0) {
        return status;
    }
    ReportInfoLine("");
    ReportInfoLine("Applying Auto Skip filters");
    const AutoSkipCounts counts = applyAutoSkip(model, settings);
    ReportInfoLine("Auto Skip filtering is finished.");
    logCounts(counts);
    return 0;
}

} // namespace keldrin
