#include "bench_survey.h"

#include "import/avg_file.h"
#include "import/import_steps.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "physics/apparent_resistivity.h"
#include "projectfile/project_file.h"
#include "shell/open_project.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace keldrin {
namespace {

// A project of 2048 soundings by 30 windows, with or without its apparent resistivities.
std::string makeProject(bool withResistivities) {
    const std::string data = bench::scratchPath("open.avg");
    std::ofstream(data, std::ios::binary) << bench::avgText(2048, 30);
    SurveyModel model;
    MD_Init(model.metadata, true);
    STD_Init_Namelist(model);
    Mde_File_Input(model, bench::scratchPath("none.mde"));
    AVG_Count(model, data);
    const LineEntry entry = model.lines.entries[0];
    model.preset.SelectedArrayIndex = entry.ArrayIndex;
    static_cast<void>(STD_Allocate_hTrn(model, soundingsNeeded(entry)));
    AVG_Read(model, data, entry.LineLabel.view());
    if (withResistivities) {
        ARes_Survey(model);
    }
    std::string path = bench::scratchPath("open.std");
    static_cast<void>(STD_File_Write(model, path));
    std::filesystem::remove(data);
    return path;
}

/// Argument: 1 with apparent resistivities in the file, 0 without, so that they are computed.
void openProject(benchmark::State &state) {
    messageLog().quiet = true;
    std::string path = makeProject(state.range(0) == 1);
    SurveyModel model;
    for (auto _ : state) {
        if (OpenProject(model, path) != 0) {
            state.SkipWithError("the project cannot be opened");
        }
    }
    std::filesystem::remove(path);
}
BENCHMARK(openProject)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace keldrin
