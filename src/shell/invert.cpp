#include "shell/invert.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "screen/graphics_errors.h"
#include "shell/open_project.h"
#include "shell/project_copy.h"
#include "toolkit/child_process.h"
#include "toolkit/dialog_specs/dialog_specs.h"
#include "toolkit/toolkit.h"

namespace keldrin {

namespace {

/// Reads the toolkit's error state and reports a run that did not take place.
void reportFailedRun(const std::string &path) {
    const int state = ToolkitErrorState(1);
    const int systemError = ToolkitErrorState(2);
    const std::string words = "OS command \"" + std::string(EngineName) + " " + path + "\"";
    if (state == ErrorCannotRun) {
        if (systemError != 0) { // without a code the system has nothing to say
            ReportError(
                {words, "generated an operating-system error = " + std::to_string(systemError)});
        }
    } else if (state != 0) {
        ReportError({words, "generated a toolkit error = " + std::to_string(state)});
    }
}

void logEngineLine(std::string_view line) {
    ReportInfoLine(std::string(EngineName) + ": " + std::string(line));
}

} // namespace

int Invert(SurveyModel &model, std::string &path) {
    path.resize(trimRight(path).size());
    if (!isProjectPath(path)) { // the engine writes over the file that it is given
        ReportError({"ERROR: Only *.std files can be inverted.", path,
                     "Save the project under a name that ends in .std first."});
        return 0;
    }
    constexpr int waitForItsEnd = 2;
    CheckGraphicsError();
    ProjectCopy copy(path);
    const bool ended = IOsCommand({EngineName, path}, waitForItsEnd, logEngineLine, &EngineDialog);
    reportFailedRun(path);
    copy.settle(!ended);
    const int status = OpenProject(model, path);
    copy.conclude(status == 0);
    return status;
}

void showEngineStatus() {
    const std::string own = programDirectory(ToolkitArgument(0));
    const bool found = findProgram(EngineName, IOsVariable("PATH"), own).has_value();
    ToolkitStatus(StatusPart::Program,
                  found ? "" : std::string(EngineName) + " was not found; Invert cannot run.");
}

} // namespace keldrin
