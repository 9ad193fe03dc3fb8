#include "review/review_history.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <map>
#include <span>
#include <utility>

namespace keldrin {

namespace {

// An error that is no number equals itself here.
bool sameBits(float left, float right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
}

void applyStep(SurveyModel &model, const MarkStep &step, float MarkChange::*value,
               float CutoffChange::*cutoff) {
    if (step.cutoff.before != step.cutoff.after) {
        model.control.DataCutoff = step.cutoff.*cutoff;
    }
    for (const MarkChange &change : step.changes) {
        model.sounding(change.station).TEMerr[change.window] = change.*value;
    }
}

} // namespace

void noteChanges(MarkStep &step, int station, const WindowReals &before, const WindowReals &after) {
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!sameBits(before[i], after[i])) {
            step.changes.push_back({station, i, before[i], after[i]});
        }
    }
}

bool recordMarks(MarkHistory &history, MarkStep step) {
    if (step.isEmpty()) {
        return false;
    }
    const auto first = history.steps.begin() + static_cast<std::ptrdiff_t>(history.applied);
    history.dropped.assign(std::make_move_iterator(first),
                           std::make_move_iterator(history.steps.end()));
    history.steps.resize(history.applied);
    history.steps.push_back(std::move(step));
    history.applied = history.steps.size();
    return true;
}

void forgetLastMarks(MarkHistory &history, SurveyModel &model) {
    undoMarks(history, model);
    history.steps.resize(history.applied);
    std::move(history.dropped.begin(), history.dropped.end(), std::back_inserter(history.steps));
    history.dropped.clear();
}

const MarkStep *undoMarks(MarkHistory &history, SurveyModel &model) {
    if (history.applied == 0) {
        return nullptr;
    }
    const MarkStep &step = history.steps[--history.applied];
    applyStep(model, step, &MarkChange::before, &CutoffChange::before);
    return &step;
}

const MarkStep *redoMarks(MarkHistory &history, SurveyModel &model) {
    if (history.applied == history.steps.size()) {
        return nullptr;
    }
    const MarkStep &step = history.steps[history.applied++];
    applyStep(model, step, &MarkChange::after, &CutoffChange::after);
    return &step;
}

void keepUndoneMarks(MarkHistory &history) {
    const auto applied = static_cast<std::ptrdiff_t>(history.applied);
    history.steps.erase(history.steps.begin(), history.steps.begin() + applied);
    history.applied = 0;
    history.dropped.clear();
}

void rebaseUndoneMarks(MarkHistory &history, const SurveyModel &model) {
    std::map<std::pair<int, std::size_t>, float> errors; // as they are after the steps so far
    float cutoff = model.control.DataCutoff;
    for (MarkStep &step : history.steps) {
        const bool moves = step.cutoff.before != step.cutoff.after;
        step.cutoff = {cutoff, moves ? step.cutoff.after : cutoff};
        cutoff = step.cutoff.after;
        std::erase_if(step.changes, [&model](const MarkChange &change) {
            return change.station < 1 || change.station > model.SoundingCount ||
                   change.window >= windowCount(model.sounding(change.station));
        });
        for (MarkChange &change : step.changes) {
            const auto key = std::pair(change.station, change.window);
            const float stored = model.sounding(change.station).TEMerr[change.window];
            float &error = errors.try_emplace(key, stored).first->second;
            change.before = error;
            change.after = withSkipMark(error, isSkipped(change.after));
            error = change.after;
        }
    }
    std::erase_if(history.steps, [](const MarkStep &step) { return step.isEmpty(); });
}

bool cutoffHasChanged(const MarkHistory &history) {
    const auto applied = static_cast<std::ptrdiff_t>(history.applied);
    const auto end = history.steps.begin() + applied;
    const auto first = std::find_if(history.steps.begin(), end, [](const MarkStep &step) {
        return step.cutoff.before != step.cutoff.after;
    });
    if (first == end) {
        return false;
    }
    float now = first->cutoff.after;
    for (auto step = first; step != end; ++step) {
        now = step->cutoff.before != step->cutoff.after ? step->cutoff.after : now;
    }
    return now != first->cutoff.before;
}

// Asked for at every event, with a history that may hold every window of the line several times.
std::size_t changedMarks(const MarkHistory &history) {
    struct WindowMark {
        bool isKnown = false;
        bool first = false;
        bool last = false;
    };
    const auto steps = std::span(history.steps).first(history.applied);
    int stations = 0;
    for (const MarkStep &step : steps) {
        for (const MarkChange &change : step.changes) {
            stations = std::max(stations, change.station);
        }
    }
    std::vector<WindowMark> marks(asIndex(stations) * MaxWindows);
    for (const MarkStep &step : steps) {
        for (const MarkChange &change : step.changes) {
            WindowMark &mark = marks[asIndex(change.station - 1) * MaxWindows + change.window];
            mark.first = mark.isKnown ? mark.first : isSkipped(change.before);
            mark.last = isSkipped(change.after);
            mark.isKnown = true;
        }
    }
    return static_cast<std::size_t>(std::ranges::count_if(
        marks, [](const WindowMark &mark) { return mark.first != mark.last; }));
}

} // namespace keldrin
