#include "conditioning/transmitter_choice.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace keldrin {

double nearestTransmitter(const SurveyModel &model, double station) {
    double nearest = station;
    double least = -1.0;
    for (const SoundingRecord &record : model.soundings()) {
        const double distance = std::fabs(record.TxStn - station);
        if (least < 0.0 || distance < least) {
            least = distance;
            nearest = record.TxStn;
        }
    }
    return nearest;
}

void settleTransmitter(SurveyModel &model) {
    const std::span<const SoundingRecord> soundings = model.soundings();
    const double selected = model.control.TxStn;
    const auto isSelected = [selected](const SoundingRecord &record) {
        return sameFileStation(record.TxStn, selected);
    };
    if (model.control.SurveyTypeIndex == FixedLoop && !soundings.empty() &&
        std::none_of(soundings.begin(), soundings.end(), isSelected)) {
        model.control.TxStn = nearestTransmitter(model, selected);
    }
}

} // namespace keldrin
