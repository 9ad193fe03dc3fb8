#include "conditioning/auto_skip.h"

#include "base/index.h"
#include "conditioning/auto_skip_dialog.h"
#include "conditioning/unread_fields.h"
#include "messages/message_log.h"
#include "page/drawing.h"
#include "screen/graphics_errors.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <string>
#include <utility>

namespace keldrin {

namespace {

/// What has happened so far in one sounding. Each mark stays once it is set.
struct StickyMarks {
    bool error = false;
    bool slope = false;
};

void mark(SoundingRecord &record, const ChosenWindows &taken) {
    const std::size_t windows = windowCount(record);
    for (std::size_t i = 0; i < windows; ++i) {
        record.TEMerr[i] = withSkipMark(record.TEMerr[i], taken[i]);
    }
}

AutoSkipAnswers withinLimits(const AutoSkipSettings &settings, float cutoff, int maxWindows) {
    AutoSkipAnswers answers = {settings, cutoff, maxWindows};
    orderWindows(answers.settings);
    limitFields(AutoSkipDialog, answers);
    return answers;
}

void clearRootWindow() {
    ToolkitClearPage();
    ToolkitPageKind("blank");
}

} // namespace

ChosenWindows takenByAutoSkip(const SoundingRecord &record, const AutoSkipSettings &settings,
                              float cutoff, AutoSkipCounts &counts) {
    ChosenWindows taken;
    StickyMarks marks;
    const int windows = limited(record.NumTW, 0, MaxWindows);
    for (int number = 1; number <= windows; ++number) {
        const std::size_t i = asIndex(number - 1);
        const float error = trueError(record.TEMerr[i]);
        if (number < settings.firstWindow || number > settings.lastWindow) {
            taken[i] = true;
            ++counts.outsideRange;
            continue;
        }
        const bool negative = settings.negativeFilter && record.TEMobs[i] <= 0.0F;
        marks.error = marks.error || (settings.errorFilter && error > cutoff);
        // The window before counts even when it was skipped itself.
        const bool rising = number > std::max(settings.firstWindow, 1) &&
                            record.TEMobs[i] - record.TEMobs[i - 1] >= 0.0F && error > 1.0F;
        marks.slope = marks.slope || (settings.slopeFilter && rising);
        taken[i] = negative || marks.error || marks.slope;
        counts.negative += negative ? 1 : 0;
        counts.error += marks.error ? 1 : 0;
        counts.slope += marks.slope ? 1 : 0;
    }
    counts.skipped += static_cast<int>(taken.count());
    counts.windows += windows;
    return taken;
}

void logAutoSkipCounts(const AutoSkipCounts &counts) {
    for (const AutoSkipFilter &filter : AutoSkipFilters) {
        ReportInfoLine("Windows taken by the " + std::string(filter.name) + ": " +
                       std::to_string(counts.*filter.taken));
    }
}

int largestWindowCount(const SurveyModel &model) {
    int largest = 0;
    for (const SoundingRecord &record : model.soundings()) {
        largest = std::max(largest, record.NumTW);
    }
    return largest;
}

void orderWindows(AutoSkipSettings &settings) {
    if (settings.firstWindow > settings.lastWindow) {
        std::swap(settings.firstWindow, settings.lastWindow);
    }
}

AutoSkipCounts applyAutoSkip(SurveyModel &model, const AutoSkipSettings &settings) {
    AutoSkipCounts counts;
    for (SoundingRecord &record : model.soundings()) {
        mark(record, takenByAutoSkip(record, settings, model.control.DataCutoff, counts));
    }
    return counts;
}

void limitAutoSkip(const SurveyModel &model, AutoSkipSettings &settings, float &DataCutoff) {
    const AutoSkipAnswers answers = withinLimits(settings, DataCutoff, largestWindowCount(model));
    settings = answers.settings;
    DataCutoff = answers.cutoff;
}

int VerifyAutoSkip(int maxWindows, AutoSkipSettings &settings, float &DataCutoff) {
    CheckGraphicsError();
    // What the limits change becomes a setting at Continue only.
    AutoSkipAnswers answers = withinLimits(settings, DataCutoff, maxWindows);
    const DialogAnswer answer = askDialog(AutoSkipDialog, answers);
    if (!answer.confirmed()) {
        return 1;
    }
    reportUnreadFields(answer.unread);
    settings = answers.settings;
    orderWindows(settings);
    DataCutoff = answers.cutoff;
    return 0;
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
    logAutoSkipCounts(counts);
    return 0;
}

} // namespace keldrin
