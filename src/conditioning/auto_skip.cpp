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
constexpr int CutoffField = 1051;

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
    for (int number = 1; number <= record.NumTW; ++number) {
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
        const bool rising = number > settings.firstWindow &&
                            record.TEMobs[i] - record.TEMobs[i - 1] >= 0.0F && error > 1.0F;
        marks.slope = marks.slope || (settings.slopeFilter && rising);
        const bool skip = negative || marks.error || marks.slope;
        record.TEMerr[i] = skip ? error + SkipOffset : error;
        counts.negative += negative ? 1 : 0;
        counts.error += marks.error ? 1 : 0;
        counts.slope += marks.slope ? 1 : 0;
        counts.skipped += skip ? 1 : 0;
    }
    counts.windows += record.NumTW;
}

void logCounts(const AutoSkipCounts &counts) {
    ReportInfoLine("Window range took " + std::to_string(counts.outsideRange) + " windows.");
    ReportInfoLine("Error filter took " + std::to_string(counts.error) + " windows.");
    ReportInfoLine("Negative filter took " + std::to_string(counts.negative) + " windows.");
    ReportInfoLine("Slope filter took " + std::to_string(counts.slope) + " windows.");
}

int largestWindowCount(const SurveyModel &model) {
    int largest = 0;
    for (int i = 0; i < model.SoundingCount; ++i) {
        largest = std::max(largest, model.hTrn[static_cast<std::size_t>(i)].NumTW);
    }
    return largest;
}

void clearRootWindow() {
    ToolkitClearPage();
    ToolkitPageKind("blank");
}

} // namespace

AutoSkipCounts applyAutoSkip(SurveyModel &model, const AutoSkipSettings &settings) {
    AutoSkipCounts counts;
    for (int i = 0; i < model.SoundingCount; ++i) {
        filterSounding(model.hTrn[static_cast<std::size_t>(i)], settings,
                       model.control.DataCutoff, counts);
    }
    return counts;
}

int VerifyAutoSkip(int maxWindows, AutoSkipSettings &settings, float &DataCutoff) {
    CheckGraphicsError();
    // Working copies: the limited numbers become settings at Continue only.
    int first = settings.firstWindow;
    int last = settings.lastWindow;
    if (first > last) {
        std::swap(first, last);
    }
    first = std::max(std::min(first, maxWindows), 1);
    last = std::max(std::min(last, maxWindows), 1);
    WDialogLoad(Dialog::AutoSkip);
    WDialogRangeInteger(FirstField, 1, maxWindows);
    WDialogRangeInteger(LastField, 1, maxWindows);
    WDialogRangeReal(CutoffField, 0.1F, 10000.0F);
    WDialogPutInteger(FirstField, first);
    WDialogPutInteger(LastField, last);
    for (const SwitchField &field : SwitchFields) {
        WDialogPutCheckBox(field.id, settings.*field.on);
    }
    WDialogPutReal(CutoffField, limited(DataCutoff, 0.1F, 10000.0F), "(F12.1)");
    WDialogShow(-1, -1, ButtonContinue, DialogModal);
    const bool confirmed = ToolkitDialogInfo(1) == ButtonContinue;
    if (confirmed) {
        settings.firstWindow = first;
        settings.lastWindow = last;
        WDialogGetInteger(FirstField, settings.firstWindow);
        WDialogGetInteger(LastField, settings.lastWindow);
        for (const SwitchField &field : SwitchFields) {
            WDialogGetCheckBox(field.id, settings.*field.on);
        }
        WDialogGetReal(CutoffField, DataCutoff);
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
