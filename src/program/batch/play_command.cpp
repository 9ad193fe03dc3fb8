#include "program/batch/command.h"

#include "model/survey_model.h"
#include "shell/main_loop.h"
#include "shell/menu.h"
#include "shell/record_scenario.h"
#include "toolkit/scripted/scripted_run.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace keldrin {

// play [--record FILE] SCENARIO [FILE]
int playCommand(CommandWords words) {
    if (words.size() >= 2 && words[0] == "--record") {
        recordFromStart(std::string(words[1]), false);
        words = words.subspan(2);
    }
    if (words.empty() || words.size() > 2) {
        std::fprintf(stderr, "keldrin-batch play: needs a scenario and at most one file\n");
        return ExitUsage;
    }
    std::vector<std::string> arguments = {"keldrin-batch"};
    if (words.size() == 2) {
        arguments.emplace_back(words[1]);
    }
    offerMenu();
    const int status =
        startScriptedRun(std::string(words[0]), std::move(arguments), std::cout, std::cerr);
    if (status != 0) {
        return status;
    }
    SurveyModel model;
    runProgram(model);
}

} // namespace keldrin
