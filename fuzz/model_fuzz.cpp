#include "scratch_file.h"

#include "base/clock.h"
#include "messages/message_log.h"
#include "projectfile/model_file.h"
#include "projectfile/project_file.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Any bytes as the layered-model file of a small project, its array given by the first byte: they
// are read within their limits, and what is written comes back with the same layers.

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

/// Soundings at 100, 150 and 200, the last so high up that 32-bit elevations are whole metres.
void makeProject(SurveyModel &model, int surveyType) {
    constexpr int soundings = 3;
    static_cast<void>(STD_Allocate_hTrn(model, soundings));
    model.SoundingCount = soundings;
    model.ModelLayerCount = 2;
    setSurveyType(model.control, surveyType);
    model.control.TxStn = surveyType == FixedLoop ? 1.0 : 0.0;
    double station = 100.0;
    for (SoundingRecord &record : model.hTrn) {
        record.Station = record.RxStn = station;
        record.TxStn = surveyType == FixedLoop ? 1.0 : station;
        record.Elevation = station > 199.0 ? 1.0E7 : 312.5;
        station += 50.0;
    }
}

bool within(float value, float low, float high) {
    return value >= low && value <= high; // false for a NaN
}

void requireLimits(const SurveyModel &model) {
    for (const SoundingRecord &record : model.hTrn) {
        require(record.NumLayer >= 0 && record.NumLayer <= MaxLayers);
        require(record.NumLayer <= model.ModelLayerCount);
        for (std::size_t i = 0; i < static_cast<std::size_t>(record.NumLayer); ++i) {
            require(within(record.ResInv[i], 1.0E-4F, 1.0E6F));
            require(within(record.Res0[i], 1.0E-4F, 1.0E6F));
            require(within(record.Rerr0[i], 0.1F, 9999.9F));
            require(within(record.Rerr[i], 0.1F, 9999.9F));
            require(within(record.dzW[i], 0.01F, 100.0F));
            require(within(record.Rsns[i], 0.0F, 100.0F));
            require(within(record.ThkInv[i], 0.1F, 99999.9F));
            require(record.ZMid[i] <= 0.0F);
        }
    }
}

void requireSameLayers(const SoundingRecord &before, const SoundingRecord &after) {
    require(before.NumLayer == after.NumLayer);
    for (std::size_t i = 0; i < static_cast<std::size_t>(before.NumLayer); ++i) {
        const float resistivity = before.ResInv[i]; // five digits in the file
        require(std::fabs(after.ResInv[i] - resistivity) <= 1.0E-4F * resistivity);
        require(std::fabs(after.dzW[i] - before.dzW[i]) <= 0.0051F);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static SurveyModel model;
    static const std::string path = scratchPath(".m1d");
    clearScratch();
    fixClock(DateTime{2021, 5, 14, 9, 30, 0});
    messageLog().quiet = true;
    const int surveyType = size > 0 ? data[0] % 4 + 1 : InLoop;
    makeProject(model, surveyType);
    store(path, {reinterpret_cast<const char *>(data), size});
    static_cast<void>(M1D_File_Read(model, path));
    requireLimits(model);
    const std::vector<SoundingRecord> before = model.hTrn;
    static_cast<void>(M1D_File_Write(model, path));
    makeProject(model, surveyType);
    static_cast<void>(M1D_File_Read(model, path));
    requireLimits(model);
    for (std::size_t i = 0; i < before.size(); ++i) {
        requireSameLayers(before[i], model.hTrn[i]);
    }
    return 0;
}
