#pragma once

#include "model/survey_model.h"

#include <cmath>
#include <cstddef>

namespace keldrin {

/// An In-Loop line to the east, with a sounding every 50 m. Windows are at 0.1, 0.2, 0.4 .. msec
/// with apparent resistivities of 10, 20, 30 .. ohm-m; layers are 10 m thick with 100, 110 .. ohm-m
/// at elevation 300, of which the data see the first two thirds.
inline SurveyModel lineSurvey(int soundings, int windows = 5, int layers = 6) {
    SurveyModel survey;
    setSurveyType(survey.control, InLoop);
    survey.hTrn.resize(static_cast<std::size_t>(soundings));
    survey.SoundingCount = soundings;
    for (int i = 0; i < soundings; ++i) {
        SoundingRecord &sounding = survey.sounding(i + 1);
        sounding.Station = 1000.0 + 50.0 * i;
        sounding.RxStn = sounding.Station;
        sounding.TxStn = sounding.Station;
        sounding.East = 400000.0 + 50.0 * i;
        sounding.North = 5000000.0;
        sounding.Elevation = 300.0;
        sounding.NumTW = windows;
        for (int k = 0; k < windows; ++k) {
            const auto w = static_cast<std::size_t>(k);
            sounding.TWcenter[w] = 0.1F * std::pow(2.0F, static_cast<float>(k));
            sounding.TEMobs[w] = 1000.0F / static_cast<float>(k + 1);
            sounding.TEMcalc[w] = sounding.TEMobs[w];
            sounding.TEMerr[w] = 3.0F;
            sounding.AResObs[w] = 10.0F * static_cast<float>(k + 1);
        }
        sounding.NumLayer = layers;
        for (int k = 0; k < layers; ++k) {
            const auto l = static_cast<std::size_t>(k);
            sounding.ThkInv[l] = 10.0F;
            sounding.ZMid[l] = -10.0F * (static_cast<float>(k) + 0.5F);
            sounding.ResInv[l] = 100.0F + 10.0F * static_cast<float>(k);
            sounding.Rsns[l] = 3 * k < 2 * layers ? 3.0F : 2.99F;
        }
    }
    return survey;
}

} // namespace keldrin
