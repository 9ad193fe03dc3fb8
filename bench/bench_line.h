#pragma once

#include "model/survey_model.h"

#include <cmath>
#include <cstddef>

namespace keldrin::bench {

/// An In-Loop line of soundings with `windows` windows and `layers` layers, one each 25 m to the
/// east.
inline SurveyModel lineOf(int soundings, int windows, int layers) {
    SurveyModel survey;
    survey.hTrn.resize(static_cast<std::size_t>(soundings));
    survey.SoundingCount = soundings;
    double station = 0.0;
    for (SoundingRecord &sounding : survey.hTrn) {
        sounding.Station = sounding.RxStn = sounding.TxStn = station += 25.0;
        sounding.East = 400000.0 + station;
        sounding.North = 5200000.0;
        sounding.NumTW = windows;
        sounding.NumLayer = layers;
        for (int i = 0; i < windows; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const float time =
                0.03F * std::pow(400.0F, static_cast<float>(i) / static_cast<float>(windows));
            sounding.TWcenter[k] = time;
            sounding.TEMobs[k] = 600.0F * std::pow(time, -2.5F);
            sounding.TEMcalc[k] = 1.02F * sounding.TEMobs[k];
            sounding.TEMerr[k] = i % 10 == 9 ? SkipOffset + 30.0F : 3.0F;
            sounding.AResObs[k] = 40.0F + time;
            sounding.AResCalc[k] = 41.0F + time;
        }
        for (int i = 0; i < layers; ++i) {
            const auto k = static_cast<std::size_t>(i);
            sounding.ThkInv[k] = 10.0F;
            sounding.ZMid[k] = -10.0F * (static_cast<float>(i) + 0.5F);
            sounding.Rsns[k] = 10.0F;
            sounding.ResInv[k] = 50.0F + 30.0F * std::sin(0.4F * static_cast<float>(i));
        }
    }
    return survey;
}

} // namespace keldrin::bench
