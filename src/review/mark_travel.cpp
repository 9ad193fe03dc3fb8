#include "review/mark_travel.h"

#include "model/same_window.h"
#include "review/review_skip.h"

namespace keldrin {

namespace {

bool setsMark(int flag) {
    return (flag & 1) != 0;
}

void setMark(SoundingRecord &sounding, std::size_t window, bool skipped) {
    if (isPresent(sounding.TEMobs[window])) {
        sounding.TEMerr[window] = withSkipMark(sounding.TEMerr[window], skipped);
    }
}

} // namespace

MarkStep changesOf(SurveyModel &model, int station, const std::function<void()> &act) {
    std::vector<WindowReals> before;
    before.reserve(model.soundings().size());
    for (const SoundingRecord &sounding : model.soundings()) {
        before.push_back(sounding.TEMerr);
    }
    const float cutoff = model.control.DataCutoff;
    act();
    MarkStep step{station, {}, {cutoff, model.control.DataCutoff}};
    for (int ordinal = 1; ordinal <= model.SoundingCount; ++ordinal) {
        noteChanges(step, ordinal, before[asIndex(ordinal - 1)], model.sounding(ordinal).TEMerr);
    }
    return step;
}

std::vector<std::size_t> windowsAimedAt(SoundingRecord &sounding,
                                        const std::function<void()> &act) {
    const WindowReals errors = sounding.TEMerr;
    const std::size_t windows = windowCount(sounding);
    for (std::size_t i = 0; i < windows; ++i) {
        sounding.TEMerr[i] = withSkipMark(errors[i], false);
    }
    act();
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < windows; ++i) {
        if (isSkipped(sounding.TEMerr[i]) && isPresent(sounding.TEMobs[i])) {
            found.push_back(i);
        }
    }
    sounding.TEMerr = errors;
    return found;
}

void markFrom(SoundingRecord &sounding, std::size_t window, int flag) {
    const std::size_t windows = windowCount(sounding);
    for (std::size_t i = window; i < windows; ++i) {
        setMark(sounding, i, setsMark(flag));
    }
}

void markInAll(SurveyModel &model, int station, std::span<const std::size_t> windows, int flag) {
    for (const std::size_t window : windows) {
        const float time = model.sounding(station).TWcenter[window];
        for (SoundingRecord &sounding : model.soundings()) {
            if (const auto found = windowAt(sounding, time)) {
                setMark(sounding, *found, setsMark(flag));
            }
        }
    }
}

void copyMarks(SurveyModel &model, int station, std::span<const OrdinalRange> to) {
    const SoundingRecord from = model.sounding(station);
    for (int ordinal = 1; ordinal <= model.SoundingCount; ++ordinal) {
        if (ordinal == station || !isInList(to, ordinal)) {
            continue;
        }
        SoundingRecord &sounding = model.sounding(ordinal);
        const std::size_t windows = windowCount(sounding);
        for (std::size_t i = 0; i < windows; ++i) {
            if (const auto source = windowAt(from, sounding.TWcenter[i])) {
                setMark(sounding, i, isSkipped(from.TEMerr[*source]));
            }
        }
    }
}

} // namespace keldrin
