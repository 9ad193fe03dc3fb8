#include "base/number_text.h"
#include "base/real.h"
#include "text/columns.h"
#include "text/value_readers.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace keldrin {
namespace {

/// A data row of a project file, with a calculated value and resistivities.
constexpr std::string_view ProjectLine =
    "1250,450120.5,6781250,312.4,1250,1200,0.1234,2.500E-2,1.23457E+03,2.5,0,0,1,1.20000E+03,"
    "123.4,99.87";
constexpr int ProjectColumns = 16;
constexpr std::size_t ColumnWidth = 32;

void countCells(benchmark::State &state, int cells) {
    state.SetItemsProcessed(state.iterations() * cells);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(ProjectLine.size()));
}

void splitLine(benchmark::State &state) {
    SplitCells cells;
    for (auto _ : state) {
        Str_Split_Columns(ProjectLine, ProjectColumns, ColumnWidth, cells);
        benchmark::DoNotOptimize(cells.cells.data());
    }
    countCells(state, ProjectColumns);
}
BENCHMARK(splitLine);

void splitAndReadLine(benchmark::State &state) {
    SplitCells cells;
    std::array<double, 6> positions{};
    std::array<float, ProjectColumns - 6> values{};
    for (auto _ : state) {
        Str_Split_Columns(ProjectLine, ProjectColumns, ColumnWidth, cells);
        const RecordLine record = {1, ProjectLine};
        int column = 0;
        for (double &position : positions) {
            Val_Read_R8(record, cells.column(++column), "Station", MissingValue, position);
        }
        for (float &value : values) {
            Val_Read_R4(record, cells.column(++column), "TEMobs", MissingValue, value);
        }
        benchmark::DoNotOptimize(positions);
        benchmark::DoNotOptimize(values);
    }
    countCells(state, ProjectColumns);
}
BENCHMARK(splitAndReadLine);

template <class Real>
std::vector<Real> sampleValues() {
    std::vector<Real> values;
    values.reserve(1024);
    for (int i = 0; i < 1024; ++i) {
        values.push_back(static_cast<Real>(std::exp(0.0117 * (i - 512)) * (i % 3 == 0 ? -1 : 1)));
    }
    return values;
}

template <class Real>
void numberText(benchmark::State &state, const char *text) {
    const EditDescriptor descriptor = editDescriptor(text);
    const std::vector<Real> values = sampleValues<Real>();
    std::string out;
    for (auto _ : state) {
        out.clear();
        for (const Real value : values) {
            appendNumberText(out, value, descriptor);
        }
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
void numberText8(benchmark::State &state, const char *text) {
    numberText<double>(state, text);
}
void numberText4(benchmark::State &state, const char *text) {
    numberText<float>(state, text);
}
BENCHMARK_CAPTURE(numberText8, F14_3, "(F14.3)");
BENCHMARK_CAPTURE(numberText4, F12_2, "(F12.2)");
BENCHMARK_CAPTURE(numberText4, F14_3, "(F14.3)");
BENCHMARK_CAPTURE(numberText4, G11_4, "(1P,G11.4E1)");
BENCHMARK_CAPTURE(numberText4, G12_4, "(0P,G12.4E1)");
BENCHMARK_CAPTURE(numberText4, ES14_5, "(ES14.5)");
BENCHMARK_CAPTURE(numberText4, ES12_4, "(ES12.4E1)");

} // namespace
} // namespace keldrin
