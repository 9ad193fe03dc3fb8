#include "bench_survey.h"

#include "import/amira/file.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace keldrin;

constexpr int Channels = 30;
constexpr int Stations = 500;
constexpr int RowsOfStation = 4;

std::string channelText() {
    std::string text = "channel times\nDELAY WIDTH\n";
    float time = 0.1F;
    for (int channel = 0; channel < Channels; ++channel, time *= 1.23F) {
        text += formatReal("(ES14.5)", time) + formatReal("(ES14.5)", 0.2F * time) + "\n";
    }
    return text;
}

/// Rows of a fixed-loop survey: two readings of X and of Z at each station.
std::string dataText() {
    std::string text = "title\n/LINE: 100N\n/CONFIG: FIXEDLOOP\n/TEMUNIT: uV/A\n/TXFREQ: 2.5\n"
                       "STATION LINE LOOP EAST NORTH ELEV COMP CURR NCH CH1\n";
    for (int row = 0; row < Stations * RowsOfStation; ++row) {
        const std::string station = std::to_string(1000 + 25 * (row / RowsOfStation));
        text += station;
        text += " 100N 3 ";
        text += station;
        text += row % 2 == 0 ? ".0 7000.0 210.0 X 8.5 " : ".0 7000.0 210.0 Z 8.5 ";
        text += std::to_string(Channels);
        float time = 0.1F;
        for (int channel = 0; channel < Channels; ++channel, time *= 1.23F) {
            text += formatReal("(ES12.4)", 6.0F * std::pow(time, -2.5F));
        }
        text += "\n";
    }
    return text;
}

void readAmiraFile(benchmark::State &state) {
    const std::string path = bench::scratchPath("survey.tem");
    const std::string channels = bench::scratchPath("survey.chn");
    const std::string text = dataText();
    std::ofstream(path, std::ios::binary) << text;
    std::ofstream(channels, std::ios::binary) << channelText();
    messageLog().quiet = true;
    for (auto _ : state) {
        SurveyModel model;
        MD_Init(model.metadata, true);
        STD_Init_Namelist(model);
        Mde_File_Input(model, bench::scratchPath("none.mde"));
        AMR_Count(model, path);
        const LineEntry &entry = model.lines.entries[0];
        static_cast<void>(STD_Allocate_hTrn(model, soundingsNeeded(entry)));
        AMR_Read(model, path, entry.LineLabel.view());
        if (model.SoundingCount != Stations || model.hTrn[0].NumTW != Channels) {
            state.SkipWithError("not all soundings were read");
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
    std::filesystem::remove(path);
    std::filesystem::remove(channels);
}
BENCHMARK(readAmiraFile)->Unit(benchmark::kMillisecond);

} // namespace
