#include "line/line_pages.h"

#include "line/page_commands.h"
#include "line/plan_page.h"

#include <algorithm>
#include <array>
#include <string>

namespace keldrin {

namespace {

constexpr std::array Kinds = {
    LinePageKind{Command::Plan, 'L', "Plan", makePlanPage, editPlanLimits},
};

} // namespace

std::span<const LinePageKind> linePageKinds() {
    return Kinds;
}

std::string_view linePageKeys() {
    static const std::string keys = [] {
        std::string made;
        for (const LinePageKind &kind : Kinds) {
            made += kind.key;
        }
        return made;
    }();
    return keys;
}

int linePageOfKey(int key) {
    const auto *found =
        std::find_if(Kinds.begin(), Kinds.end(), [=](const auto &k) { return k.key == key; });
    return found == Kinds.end() ? 0 : found->command;
}

const LinePageKind *findLinePage(int command) {
    const auto *found = std::find_if(Kinds.begin(), Kinds.end(),
                                     [=](const auto &k) { return k.command == command; });
    return found == Kinds.end() ? nullptr : found;
}

} // namespace keldrin
