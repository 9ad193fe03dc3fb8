#include "bench_line.h"
#include "bench_survey.h"
#include "export/export_line.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace keldrin {
namespace {

/// A full line in one format.
void exportLine(benchmark::State &state) {
    const SurveyModel survey = bench::lineOf(2048, 30, 26);
    const ExportFormatName &format = exportFormats()[static_cast<std::size_t>(state.range(0))];
    const std::string base = bench::scratchPath("export");
    std::size_t bytes = 0;
    for (auto _ : state) {
        const ExportOutcome outcome = ExportLine(survey, std::array{format.format}, base);
        for (const std::string &file : outcome.results.front().files) {
            bytes += std::filesystem::file_size(file);
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
    state.SetLabel(std::string(format.name));
}
BENCHMARK(exportLine)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace keldrin
