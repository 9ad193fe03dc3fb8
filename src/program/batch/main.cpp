#include "program/batch/command.h"

#include "program/batch/batch_help.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string_view>
#include <vector>

namespace {

struct Subcommand {
    std::string_view name;
    int (*run)(keldrin::CommandWords);
};

constexpr std::array Subcommands = {Subcommand{"build", keldrin::buildCommand},
                                    Subcommand{"export", keldrin::exportTablesCommand},
                                    Subcommand{"invert", keldrin::invertCommand},
                                    Subcommand{"plot", keldrin::plotCommand},
                                    Subcommand{"skip", keldrin::skipCommand},
                                    Subcommand{"play", keldrin::playCommand}};

} // namespace

int main(int argc, char **argv) {
    const std::vector<std::string_view> words(argv + 1, argv + (argc > 0 ? argc : 1));
    if (words.empty()) {
        std::fputs(keldrin::helpText(keldrin::batchHelp()).c_str(), stdout);
        return keldrin::ExitUsage;
    }
    if (const std::optional<int> code = keldrin::answerHelp(keldrin::batchHelp(), words)) {
        return *code;
    }
    for (const Subcommand &subcommand : Subcommands) {
        if (subcommand.name == words.front()) {
            return subcommand.run(keldrin::CommandWords(words).subspan(1));
        }
    }
    std::fprintf(stderr, "keldrin-batch: unknown command %s; see keldrin-batch --help\n", argv[1]);
    return keldrin::ExitUsage;
}
