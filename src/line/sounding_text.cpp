#include "line/sounding_text.h"

#include "base/number_text.h"
#include "base/real.h"
#include "physics/data_fit.h"
#include "projectfile/table_file.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace keldrin {

namespace {

std::string skippedText(const SoundingRecord &sounding) {
    const std::size_t windows = windowCount(sounding);
    const std::span errors = std::span(sounding.TEMerr).first(windows);
    const auto skipped =
        std::count_if(errors.begin(), errors.end(), [](float error) { return isSkipped(error); });
    return std::to_string(skipped) + " of " + std::to_string(windows) + " windows skipped";
}

std::string misfitText(const SurveyModel &survey, const SoundingRecord &sounding) {
    const float misfit = soundingFit(survey.control, sounding).misfit;
    return isPresent(misfit) ? "   Misfit " + Number_Text(misfit, "(F14.2)") : "";
}

// Soundings of several transmitters may stand at one place.
std::string transmitterText(const SurveyModel &survey, const SoundingRecord &sounding) {
    if (survey.control.SurveyTypeIndex != FixedLoop) {
        return "";
    }
    const std::string transmitter = "   Transmitter " + stationText(sounding.TxStn);
    return isLeftOut(survey.control, sounding) ? transmitter + ", not part of the project"
                                               : transmitter;
}

} // namespace

std::string stationText(double station) {
    return isPresent(station) && std::isfinite(station) ? Number_Text(station, "(F15.3)") : "";
}

std::string soundingText(const SurveyModel &survey, int sounding) {
    if (sounding < 1 || sounding > survey.SoundingCount) {
        return "";
    }
    const SoundingRecord &record = survey.sounding(sounding);
    return "Station " + stationText(record.RxStn) + transmitterText(survey, record) + "   " +
           skippedText(record) + misfitText(survey, record);
}

} // namespace keldrin
