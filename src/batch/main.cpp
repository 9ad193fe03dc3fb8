#include "batch/command.h"

#include "base/version.h"

#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view Help =
    "keldrin-batch: transient electromagnetic soundings without a display\n"
    "\n"
    "usage:\n"
    "  keldrin-batch build [--out DIR] [--line N|all] FILE...\n"
    "      Makes a project (*.std) of each field data file (*.avg), beside it or in DIR. Every\n"
    "      question is answered by its default. Of a file with several lines the first is built,\n"
    "      or line N, or all; the line's name is then added to the project's name. One line of\n"
    "      output tells soundings, windows, skipped windows and warnings; messages are in\n"
    "      BASE.log and BASE.err beside the project.\n"
    "  keldrin-batch plot [--format svg,hpgl,wmf] [--soundings LIST] [--plan] [--out DIR] "
    "PROJECT...\n"
    "      Plots the soundings of each project (*.std), beside it or in DIR, as BASE0001.svg and\n"
    "      so on (.hpg for hpgl, .wmf for wmf). LIST is all, which is the default, or ordinals\n"
    "      such as 1-5,9, or none. --plan adds the map of the survey, BASE_plan.svg. Projects are\n"
    "      not changed.\n"
    "  keldrin-batch play SCENARIO [FILE]\n"
    "      Runs the program on the lines of a scenario file, which say what a user does, and\n"
    "      prints the transcript of what a user would have seen.\n"
    "  keldrin-batch --help | --version\n"
    "\n"
    "exit codes:\n"
    "  0 done   1 a file failed, or a check of the scenario   2 unusable arguments or scenario\n"
    "  3 the scenario is out of step   4 it ended inside a request   5 no progress\n";

struct Subcommand {
    std::string_view name;
    int (*run)(keldrin::CommandWords);
};

constexpr std::array Subcommands = {Subcommand{"build", keldrin::buildCommand},
                                    Subcommand{"plot", keldrin::plotCommand},
                                    Subcommand{"play", keldrin::playCommand}};

int print(std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    const std::vector<std::string_view> words(argv + 1, argv + (argc > 0 ? argc : 1));
    const std::string_view first = words.empty() ? std::string_view("--help") : words.front();
    if (first == "--version") {
        std::printf("keldrin-batch %s %s\n", keldrin::ProgramVersionText.data(),
                    keldrin::ProgramDate.data());
        return keldrin::ExitOk;
    }
    if (first == "--help" || first == "-h") {
        const int status = print(Help);
        return words.empty() ? keldrin::ExitUsage : status;
    }
    for (const Subcommand &subcommand : Subcommands) {
        if (subcommand.name == first) {
            return subcommand.run(keldrin::CommandWords(words).subspan(1));
        }
    }
    std::fprintf(stderr, "keldrin-batch: unknown command %s; see keldrin-batch --help\n", argv[1]);
    return keldrin::ExitUsage;
}
