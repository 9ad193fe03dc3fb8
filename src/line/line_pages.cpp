#include "line/line_pages.h"

#include "line/page_commands.h"
#include "line/plan_page.h"
#include "line/profile_page.h"
#include "line/section_limits_dialog.h"
#include "line/section_page.h"
#include "line/sounding_text.h"
#include "sounding/survey_map.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

namespace keldrin {

namespace {

// A page that was laid out, with its functions.
template <auto draw, auto hitAt, auto hitText, class Page>
LinePage linePageOf(const SurveyModel &survey, Page laidOut) {
    const auto page = std::make_shared<const Page>(std::move(laidOut));
    return {[page](int marked) { draw(*page, marked); },
            [page](float x, float y) { return hitAt(*page, x, y).sounding; },
            [page, &survey](float x, float y) {
                const LineHit hit = hitAt(*page, x, y);
                const std::string detail = hitText(*page, hit);
                return detail.empty()
                           ? soundingText(survey, hit.sounding)
                           : "Station " + stationText(survey.sounding(hit.sounding).RxStn) + "   " +
                                 detail;
            }};
}

LinePage makeSectionPage(const SurveyModel &survey, const LineSettings &settings,
                         std::string_view path) {
    return linePageOf<drawSection, sectionHit, sectionText>(
        survey, sectionPage(survey, settings.section, path, shownPageShape()));
}

LinePage makeProfilePage(const SurveyModel &survey, const LineSettings &settings,
                         std::string_view path) {
    return linePageOf<drawProfile, profileHit, profileText>(
        survey, profilePage(survey, settings.profile, path));
}

bool editSectionLimits(const SurveyModel &survey, LineSettings &settings) {
    return askSectionLimits(sectionPage(survey, settings.section, "", shownPageShape()),
                            settings.section);
}

bool editProfileLimits(const SurveyModel &survey, LineSettings &settings) {
    return askProfileLimits(profilePage(survey, settings.profile, ""), settings.profile);
}

constexpr std::array Kinds = {
    LinePageKind{Command::Section, 'S', "Section", makeSectionPage, editSectionLimits},
    LinePageKind{Command::Profile, 'F', "Profile", makeProfilePage, editProfileLimits},
    LinePageKind{Command::Plan, 'M', "Plan", makePlanPage, editPlanLimits},
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
