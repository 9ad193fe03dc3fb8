#include "review/review_history.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <utility>

namespace keldrin {

namespace {

// An error that is no number equals itself here.
bool sameBits(float left, float right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
}

int applyStep(SurveyModel &model, const MarkStep &step, float MarkChange::*value) {
    SoundingRecord &sounding = model.hTrn[static_cast<std::size_t>(step.station - 1)];
    for (const MarkChange &change : step.changes) {
        sounding.TEMerr[change.window] = change.*value;
    }
    return step.station;
}

} // namespace

void recordMarks(MarkHistory &history, int station, const WindowReals &before,
                 const WindowReals &after) {
    MarkStep step{station, {}};
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!sameBits(before[i], after[i])) {
            step.changes.push_back({i, before[i], after[i]});
        }
    }
    if (step.changes.empty()) {
        return;
    }
    history.steps.resize(history.applied);
    history.steps.push_back(std::move(step));
    history.applied = history.steps.size();
}

int undoMarks(MarkHistory &history, SurveyModel &model) {
    if (history.applied == 0) {
        return 0;
    }
    --history.applied;
    return applyStep(model, history.steps[history.applied], &MarkChange::before);
}

int redoMarks(MarkHistory &history, SurveyModel &model) {
    if (history.applied == history.steps.size()) {
        return 0;
    }
    ++history.applied;
    return applyStep(model, history.steps[history.applied - 1], &MarkChange::after);
}

std::size_t changedMarks(const MarkHistory &history) {
    std::map<std::pair<int, std::size_t>, MarkChange> windows; // first error and last one
    for (std::size_t i = 0; i < history.applied; ++i) {
        for (const MarkChange &change : history.steps[i].changes) {
            const auto key = std::pair(history.steps[i].station, change.window);
            windows.try_emplace(key, change).first->second.after = change.after;
        }
    }
    return static_cast<std::size_t>(
        std::count_if(windows.begin(), windows.end(), [](const auto &window) {
            return isSkipped(window.second.before) != isSkipped(window.second.after);
        }));
}

} // namespace keldrin
