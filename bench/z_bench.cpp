#include "bench_survey.h"

#include "import/import_steps.h"
#include "import/survey_information.h"
#include "import/z_file.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// A coincident-loop survey as a report file: `soundings` stations of `windows` windows.
std::string zText(int soundings, int windows) {
    std::string text =
        "survey of a benchmark\nMAGNITUDE OF DBZ/DT\n  STATION    TIME   VALUE\nIIX\n";
    for (int s = 1; s <= soundings; ++s) {
        float time = 0.03F;
        for (int w = 1; w <= windows; ++w, time *= 1.23F) {
            const float value = 6.0E2F * std::pow(time, -2.5F) *
                                (1.0F + 0.1F * std::sin(0.1F * static_cast<float>(s)));
            text += " 2" + keldrin::formatReal("(F8.1)", static_cast<float>(s)) +
                    keldrin::formatReal("(F8.5)", time) + keldrin::formatReal("(ES12.4)", value) +
                    "\n";
        }
    }
    return text + "  9999.0\n";
}

void readZFile(benchmark::State &state) {
    const std::string path = keldrin::bench::scratchPath("survey.z");
    const std::string text = zText(2048, 30);
    std::ofstream(path, std::ios::binary) << text;
    keldrin::messageLog().quiet = true;
    for (auto _ : state) {
        keldrin::SurveyModel model;
        keldrin::MD_Init(model.metadata, true);
        keldrin::STD_Init_Namelist(model);
        keldrin::Mde_File_Input(model, keldrin::bench::scratchPath("none.mde"));
        keldrin::Z_Count(model, path);
        static_cast<void>(
            keldrin::STD_Allocate_hTrn(model, keldrin::soundingsNeeded(model.lines.entries[0])));
        keldrin::Z_Read(model, path, "");
        if (model.SoundingCount != 2048 || model.hTrn[2047].NumTW != 30) {
            state.SkipWithError("not all soundings were read");
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
    std::filesystem::remove(path);
}
BENCHMARK(readZFile)->Unit(benchmark::kMillisecond);

} // namespace
