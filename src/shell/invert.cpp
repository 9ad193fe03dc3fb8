#include "shell/invert.h"

#include "base/ascii.h"
#include "base/paths.h"
#include "messages/message_log.h"
#include "screen/graphics_errors.h"
#include "shell/engine_dialog.h"
#include "shell/engine_lines.h"
#include "shell/open_project.h"
#include "shell/project_copy.h"
#include "toolkit/child_process.h"
#include "toolkit/toolkit.h"

namespace keldrin {

namespace {

// Where the system looks for the engine.
std::string searchedPlaces() {
    std::string own = programDirectory(ToolkitArgument(0));
    if (own.size() > 1 && own.back() == separatorOf(own)) {
        own.pop_back();
    }
    return "It was looked for in the directories of PATH" +
           (own.empty() ? "." : ", then in " + own);
}

/// Reads the toolkit's error state and reports a run that did not take place.
void reportFailedRun(const std::string &path) {
    const int state = ToolkitErrorState(ErrorNumber);
    const int systemError = ToolkitErrorState(ErrorOfSystem);
    const std::string words = "OS command \"" + std::string(EngineName) + " " + path + "\"";
    if (state == ErrorCannotRun) {
        if (systemError != 0) { // without a code the system has nothing to say
            ReportNotice(NoticeLevel::Box,
                         {words,
                          "generated an operating-system error = " + std::to_string(systemError),
                          searchedPlaces()});
        }
    } else if (state != 0) {
        ReportNotice(NoticeLevel::Box,
                     {words, "generated a toolkit error = " + std::to_string(state)});
    }
}

// A name that begins with "-" must not be taken for an option.
std::string asArgument(const std::string &path) {
    return path.rfind('-', 0) == 0 ? "./" + path : path;
}

void logEnd(const CommandEnd &end) {
    const std::string engine(EngineName);
    if (end.signal != 0) {
        ReportInfoLine(engine + " was ended by signal " + std::to_string(end.signal) + ".");
    } else if (end.started) {
        ReportInfoLine(engine + " ended with exit code " + std::to_string(end.exitCode) + ".");
    }
}

// The engine works on the files as they are on the disk.
bool isReady(const std::string &path) {
    if (!isProjectPath(path)) { // the engine writes over the file that it is given
        ReportError({"ERROR: Only *.std files can be inverted.", path,
                     "Save the project under a name that ends in .std first."});
        return false;
    }
    if (!isRegularFile(path)) {
        ReportNotice(NoticeLevel::Box, {"ERROR: This project is not on the disk.", path,
                                        "Nothing was started. Save writes it again."});
        return false;
    }
    return true;
}

// Logs what the engine writes and keeps the line that says how the run went.
CommandProgress takeEngineLine(std::string_view line, std::string &summary) {
    const std::string_view words = withoutEngineName(line);
    ReportInfoLine(std::string(EngineName) + ": " + std::string(words));
    if (isEngineSummary(words)) {
        summary = words;
    }
    return engineProgress(line);
}

// The copy reports a loss, once; the faults of another project, if the user chose one, are reported
// as usual.
int reopen(SurveyModel &model, std::string &path, const ProjectCopy &copy) {
    const bool before = messageLog().quiet;
    messageLog().quiet = before || (copy.reportsLoss() && pathExists(path));
    const int status = OpenProject(model, path);
    messageLog().quiet = before;
    return status;
}

} // namespace

int Invert(SurveyModel &model, std::string &path) {
    path.resize(trimRight(path).size());
    if (!isReady(path)) {
        return 0;
    }
    CheckGraphicsError();
    ProjectCopy copy(path);
    std::string summary;
    const auto line = [&summary](std::string_view text) {
        return takeEngineLine(text, summary);
    };
    const CommandEnd end =
        IOsCommand({EngineName, asArgument(path)}, WaitForItsEnd, line, &EngineDialog);
    reportFailedRun(path);
    copy.settle(end);
    const int status = reopen(model, path, copy);
    logEnd(end); // the log begins anew with the opening
    copy.conclude(status == 0, summary);
    return status;
}

void showEngineStatus() {
    const std::string own = programDirectory(ToolkitArgument(0));
    const bool found = findProgram(EngineName, IOsVariable("PATH"), own).has_value();
    ToolkitStatus(StatusPart::Program,
                  found ? "" : std::string(EngineName) + " was not found; Invert cannot run.");
}

} // namespace keldrin
