#include "line/report.h"
#include "line/section_page.h"
#include "model/survey_model.h"
#include "page/surfaces/surface.h"
#include "projectfile/project_file.h"
#include "review/review_loop.h"
#include "shell/open_project.h"
#include "toolkit/child_process.h"
#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/desktop_backend.h"
#include "toolkit/desktop/main_window.h"
#include "toolkit/toolkit_state.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace keldrin {
namespace {

const std::string Project = KELDRIN_SOURCE_DIR "/examples/project/inloop.std";

/// The whole life of a process: start, open the example, show it, take the close request, end. The
/// first painted window comes before that.
void startOpenPaintClose(benchmark::State &state) {
    const std::string scenario = "keldrin_desktop_bench.scn";
    std::ofstream(scenario) << "close\n";
    for (auto _ : state) {
        const RunResult result =
            runChild({"keldrin", "--drive", scenario, Project}, KELDRIN_PROGRAM_DIR);
        if (result.exitCode != 0 || result.toolkitError != 0) {
            state.SkipWithError("the program did not run");
        }
    }
    std::remove(scenario.c_str());
}
BENCHMARK(startOpenPaintClose)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From the press of a key in the review to the painted page of the next sounding, of 26 windows.
void reviewStep(benchmark::State &state) {
    using Clock = std::chrono::steady_clock;
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 1062, 850);
    SurveyModel model;
    std::string path = Project;
    OpenProject(model, path);

    Clock::time_point pressed;
    char key = 'P';
    backend.onIdle = [&] { // the review waits: its page is shown, then another one is asked for
        backend.window().canvas().repaint();
        if (pressed != Clock::time_point()) {
            state.SetIterationTime(std::chrono::duration<double>(Clock::now() - pressed).count());
        }
        key = !state.KeepRunning() ? 'X' : key == 'N' ? 'P' : 'N';
        pressed = Clock::now();
        queueEvent({EventKey, key, 0, 0.0, 0.0});
        backend.wake();
    };
    ReviewState review;
    Review_Loop(model, review, path, OpenProject);
    ToolkitClose();
}
BENCHMARK(reviewStep)->Unit(benchmark::kMillisecond)->UseManualTime();

/// A line of many soundings with models: those of the example again and again.
SurveyModel longLine(int soundings) {
    SurveyModel example;
    std::string path = Project;
    OpenProject(example, path);
    SurveyModel model;
    model.control = example.control;
    for (int i = 0; i < soundings; ++i) {
        SoundingRecord sounding = example.sounding(1 + i % example.SoundingCount);
        sounding.Station = sounding.RxStn = sounding.TxStn = 50.0 * i;
        sounding.East = 50.0 * i;
        sounding.North = 0.0;
        model.hTrn.push_back(sounding);
    }
    model.SoundingCount = soundings;
    return model;
}

/// Plots of 200 soundings as PNG files, as `keldrin --export png` makes them.
void exportPngPages(benchmark::State &state) {
    constexpr int soundings = 200;
    const std::filesystem::path directory =
        std::filesystem::temp_directory_path() / "keldrin-bench-png";
    std::filesystem::create_directories(directory);
    const std::string project = (directory / "line.std").string();
    {
        DesktopBackend backend({.memory = false});
        ToolkitInit(backend, {"keldrin"});
        WindowOpen(ResizableWindow, -1, -1, 1062, 850);
        SurveyModel model = longLine(soundings);
        static_cast<void>(STD_File_Write(model, project));
        ToolkitClose();
    }
    for (auto _ : state) {
        if (runChild({"keldrin", "--export", "png", project}, KELDRIN_PROGRAM_DIR).exitCode != 0) {
            state.SkipWithError("the program did not run");
        }
    }
    state.SetItemsProcessed(state.iterations() * soundings);
    std::filesystem::remove_all(directory);
}
BENCHMARK(exportPngPages)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A section of 2048 soundings with models, drawn on the window and painted.
void showFullSection(benchmark::State &state) {
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 1062, 850);
    const SurveyModel model = longLine(2048);
    for (auto _ : state) {
        drawSection(sectionPage(model, {}, Project));
        backend.window().canvas().repaint();
    }
    ToolkitClose();
}
BENCHMARK(showFullSection)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The same section when the user goes to the next sounding: it is drawn and painted again.
void stepOnFullSection(benchmark::State &state) {
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 1062, 850);
    const SurveyModel model = longLine(2048);
    const SectionPage page = sectionPage(model, {}, Project);
    int sounding = 0;
    for (auto _ : state) {
        drawSection(page, ++sounding);
        backend.window().canvas().repaint();
    }
    ToolkitClose();
}
BENCHMARK(stepOnFullSection)->Unit(benchmark::kMillisecond)->UseRealTime();

/// And when its window is uncovered: the picture is copied.
void uncoverFullSection(benchmark::State &state) {
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 1062, 850);
    drawSection(sectionPage(longLine(2048), {}, Project));
    for (auto _ : state) {
        backend.window().canvas().repaint();
    }
    ToolkitClose();
}
BENCHMARK(uncoverFullSection)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The report of 200 soundings: its pages, their PDF, the file.
void reportOfLine(benchmark::State &state) {
    DesktopBackend backend({.memory = false});
    ToolkitInit(backend, {"keldrin"});
    WindowOpen(ResizableWindow, -1, -1, 1062, 850);
    const SurveyModel model = longLine(200);
    const std::string file = "keldrin_desktop_bench.pdf";
    for (auto _ : state) {
        if (!drawReport(model, Project, file, [](std::size_t, std::size_t) { return true; })) {
            state.SkipWithError("the report was not written");
        }
    }
    std::remove(file.c_str());
    ToolkitClose();
}
BENCHMARK(reportOfLine)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace keldrin

int main(int argc, char **argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
