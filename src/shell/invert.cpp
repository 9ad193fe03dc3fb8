#include "shell/invert.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "shell/open_project.h"
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
    IOsCommand({EngineName, path}, waitForItsEnd);
    reportFailedRun(path);
    return OpenProject(model, path);
}

} // namespace keldrin
