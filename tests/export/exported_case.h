#pragma once

#include "model/survey_model.h"

#include <cstddef>

namespace keldrin {

/// A line of In-Loop soundings at 50 m to the east, each with windows that its model fits and with
/// layers of 10 m.
inline SurveyModel lineOf(int soundings, int windows, int layers) {
    SurveyModel model;
    setSurveyType(model.control, InLoop);
    model.control.LineName = "7";
    model.control.TxFreq = 8.0F;
    for (int i = 0; i < soundings; ++i) {
        SoundingRecord record;
        record.Station = 50.0 * i;
        record.RxStn = record.TxStn = record.Station;
        record.East = 1000.0 + 50.0 * i;
        record.North = 2000.0;
        record.Elevation = 100.0;
        record.NumTW = windows;
        record.NumLayer = layers;
        for (std::size_t k = 0; k < static_cast<std::size_t>(windows); ++k) {
            record.TWcenter[k] = 0.25F * static_cast<float>(k + 1);
            record.TWwidth[k] = 0.125F;
            record.TEMobs[k] = 100.0F / static_cast<float>(k + 1);
            record.TEMcalc[k] = record.TEMobs[k];
            record.AResObs[k] = 20.0F;
        }
        for (std::size_t k = 0; k < static_cast<std::size_t>(layers); ++k) {
            record.ThkInv[k] = 10.0F;
            record.ResInv[k] = 50.0F;
            record.Rsns[k] = k == 0 ? 5.0F : 1.0F;
        }
        model.hTrn.push_back(record);
    }
    model.SoundingCount = soundings;
    return model;
}

} // namespace keldrin
