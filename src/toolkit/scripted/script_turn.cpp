#include "toolkit/scripted/script_turn.h"

#include "toolkit/scripted/script_words.h"

#include <algorithm>

namespace keldrin {

namespace {

bool isAid(const ScriptLine &line) {
    return line.group == ScriptGroup::SetUp || line.group == ScriptGroup::Check;
}

} // namespace

const SetAuto *ScriptPlace::findStanding(const Request &request) const {
    const auto found = std::find_if(standing_.begin(), standing_.end(), [&](const SetAuto &answer) {
        return request.takes(answer) &&
               (answer.title.empty() || matchesPattern(request.title, answer.title));
    });
    return found == standing_.end() ? nullptr : &*found;
}

const ScriptLine *ScriptPlace::nextAction() const {
    const auto from = script_.lines.begin() + static_cast<std::ptrdiff_t>(next_);
    const auto found = std::find_if_not(from, script_.lines.end(), isAid);
    return found == script_.lines.end() ? nullptr : &*found;
}

bool ScriptPlace::atAid() const {
    return next_ < script_.lines.size() && isAid(script_.lines[next_]);
}

void ScriptPlace::begin(const std::function<void(const ScriptLine &)> &carryOut) {
    while (next_ < script_.lines.size() && script_.lines[next_].group == ScriptGroup::SetUp) {
        carryOut(script_.lines[next_++]);
    }
}

Turn ScriptPlace::take(const Request &request,
                       const std::function<void(const ScriptLine &)> &carryOut) {
    for (;;) {
        const ScriptLine *action = nextAction();
        if (action != nullptr && request.fits(*action)) {
            while (atAid()) {
                carryOut(script_.lines[next_++]);
            }
            return {Turn::Kind::Line, &script_.lines[next_++], nullptr};
        }
        if (const SetAuto *standing = findStanding(request)) {
            return {Turn::Kind::Standing, nullptr, standing};
        }
        if (atAid()) {
            carryOut(script_.lines[next_++]);
        } else if (action != nullptr) {
            return {Turn::Kind::OutOfStep, action, nullptr};
        } else {
            return {};
        }
    }
}

} // namespace keldrin
