#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>

namespace keldrin {
namespace {

constexpr int ProjectSoundings = 2048;
constexpr int ProjectWindows = 30;

/// A project of the usual largest size, with every column filled.
SurveyModel largeProject() {
    SurveyModel model;
    STD_Init_Namelist(model);
    setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
    static_cast<void>(STD_Allocate_hTrn(model, ProjectSoundings));
    model.SoundingCount = ProjectSoundings;
    for (int i = 0; i < ProjectSoundings; ++i) {
        SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
        record.Station = record.RxStn = record.TxStn = 1000.0 + 50.0 * i;
        record.East = 402000.0 + 48.507 * i;
        record.North = 5210400.0 + 12.127 * i;
        record.Elevation = 312.0 + 0.166 * (i % 100);
        record.NumTW = ProjectWindows;
        for (std::size_t w = 0; w < ProjectWindows; ++w) {
            const auto step = static_cast<float>(w);
            record.TWcenter[w] = 0.03F * std::exp(0.234F * step);
            record.TWwidth[w] = 0.23F * record.TWcenter[w];
            record.TEMobs[w] = 6.0E4F * std::exp(-0.55F * step) + 0.01F * static_cast<float>(i % 7);
            record.TEMerr[w] = 3.0F + 0.07F * step;
            record.TEMwgt[w][2] = 1.0F;
            record.TEMcalc[w] = 1.01F * record.TEMobs[w];
            record.AResObs[w] = 25.0F + step;
            record.AResCalc[w] = 24.3F + step;
        }
    }
    return model;
}

std::string benchPath() {
    return (std::filesystem::temp_directory_path() / "keldrin_bench.std").string();
}

void writeProject(benchmark::State &state) {
    messageLog().quiet = true;
    SurveyModel model = largeProject();
    const std::string path = benchPath();
    while (state.KeepRunning()) {
        static_cast<void>(STD_File_Write(model, path));
    }
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path));
    state.SetBytesProcessed(state.iterations() * bytes);
    std::filesystem::remove(path);
}
BENCHMARK(writeProject)->Unit(benchmark::kMillisecond);

/// The rows alone, without file system and flush.
void composeDataRows(benchmark::State &state) {
    const SurveyModel model = largeProject();
    std::int64_t bytes = 0;
    while (state.KeepRunning()) {
        std::string text;
        text.reserve(dataTableRoom(model));
        appendDataRows(text, model);
        bytes += static_cast<std::int64_t>(text.size());
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(composeDataRows)->Unit(benchmark::kMillisecond);

void readProject(benchmark::State &state) {
    messageLog().quiet = true;
    SurveyModel model = largeProject();
    std::string path = benchPath();
    static_cast<void>(STD_File_Write(model, path));
    while (state.KeepRunning()) {
        if (STD_File_Read(model, path) != 0) {
            state.SkipWithError("the project cannot be read");
        }
    }
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path));
    state.SetBytesProcessed(state.iterations() * bytes);
    std::filesystem::remove(path);
}
BENCHMARK(readProject)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace keldrin
