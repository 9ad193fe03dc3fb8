#include "bench_survey.h"

#include "conditioning/duplicates.h"
#include "import/avg_file.h"
#include "import/import_steps.h"
#include "import/survey_information.h"
#include "messages/message_log.h"
#include "projectfile/project_file.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

// The time of a sounding must not grow with their number.
void readAvgFile(benchmark::State &state) {
    const auto soundings = static_cast<int>(state.range(0));
    const std::string path = keldrin::bench::scratchPath("survey.avg");
    const std::string text = keldrin::bench::avgText(soundings, 30);
    std::ofstream(path, std::ios::binary) << text;
    keldrin::messageLog().quiet = true;
    for (auto _ : state) {
        keldrin::SurveyModel model;
        keldrin::MD_Init(model.metadata, true);
        keldrin::STD_Init_Namelist(model);
        keldrin::Mde_File_Input(model, keldrin::bench::scratchPath("none.mde"));
        keldrin::AVG_Count(model, path);
        const keldrin::LineEntry entry = model.lines.entries[0];
        model.preset.SelectedArrayIndex = entry.ArrayIndex;
        static_cast<void>(keldrin::STD_Allocate_hTrn(model, keldrin::soundingsNeeded(entry)));
        keldrin::AVG_Read(model, path, entry.LineLabel.view());
        keldrin::AverageDuplicateTransients(model);
        if (model.SoundingCount != soundings) {
            state.SkipWithError("not all soundings were read");
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(text.size()));
    std::filesystem::remove(path);
}
BENCHMARK(readAvgFile)->Arg(2048)->Arg(4096)->Arg(16384)->Unit(benchmark::kMillisecond);

} // namespace
