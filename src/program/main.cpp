#include "model/survey_model.h"
#include "program/desktop_help.h"
#include "program/export_command.h"
#include "shell/main_loop.h"
#include "shell/menu.h"
#include "shell/record_scenario.h"
#include "toolkit/desktop/desktop_run.h"

#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

using Words = std::vector<std::string>;

[[noreturn]] void serve() {
    keldrin::SurveyModel model;
    keldrin::runProgram(model);
}

int usage(const std::string &fault) {
    std::cerr << "keldrin: " << fault << "; see keldrin --help\n";
    return keldrin::ExitUsage;
}

// keldrin --record RECORD [FILE]
int record(Words words) {
    if (words.size() < 3 || words.size() > 4) {
        return usage("--record needs the file of the record and at most one file");
    }
    keldrin::recordFromStart(words[2], true);
    words.erase(words.begin() + 1, words.begin() + 3);
    keldrin::startDesktop(std::move(words));
    serve();
}

// keldrin --drive SCENARIO [FILE]
int drive(const Words &words) {
    if (words.size() < 3 || words.size() > 4) {
        return usage("--drive needs a scenario and at most one file");
    }
    Words arguments = {words[0]};
    if (words.size() == 4) {
        arguments.push_back(words[3]);
    }
    const int status =
        keldrin::startDrivenRun(words[2], std::move(arguments), std::cout, std::cerr);
    if (status != 0) {
        return status;
    }
    serve();
}

} // namespace

int main(int argc, char **argv) {
    const Words words(argv, argv + argc);
    keldrin::offerMenu();
    const std::string first = words.size() > 1 ? words[1] : "";
    if (const std::optional<int> code = keldrin::answerDesktopHelp(first)) {
        return *code;
    }
    if (first == "--export") {
        return keldrin::exportCommand(argc, argv);
    }
    if (first.substr(0, 2) == "--" && first != "--drive" && first != "--record") {
        return usage("unknown option " + first);
    }
    if (!keldrin::hasDisplay()) {
        return usage("there is no display; keldrin-batch works without one");
    }
    if (first == "--drive") {
        return drive(words);
    }
    if (first == "--record") {
        return record(words);
    }
    if (words.size() > 2) {
        return usage("opens one file at a time");
    }
    keldrin::startDesktop(words);
    serve();
}
