#include "toolkit/toolkit.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/paths.h"
#include "page/hardcopy_state.h"
#include "toolkit/file_filter.h"
#include "toolkit/long_work.h"
#include "toolkit/toolkit_state.h"

#include <utility>

namespace keldrin {

namespace {

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find('\r');
        lines.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return lines;
        }
        text.remove_prefix(end + 1);
    }
}

// For the eye: without the directories of its arguments.
std::string shortForm(const std::vector<std::string> &command) {
    std::string words = command.front();
    for (std::size_t i = 1; i < command.size(); ++i) {
        words.append(" ").append(fileNameOf(command[i]));
    }
    return words;
}

} // namespace

bool ToolkitFileChooser(std::string_view filter, int flags, std::string &path,
                        std::string_view title) {
    ToolkitState &state = toolkitState();
    state.lastCommonOk = false;
    if (state.backend == nullptr) {
        return false;
    }
    const bool save = flags == ChooseForSave;
    const FileRequest request{save, std::string(title), std::string(trimRight(filter)), path};
    const WorkPause pause;
    const std::optional<std::string> chosen = state.backend->chooseFile(request);
    if (state.record != nullptr) {
        state.record->chose(chosen);
    }
    if (chosen) {
        path = save ? withFilterExtension(*chosen, filter) : *chosen;
        state.lastCommonOk = true;
    }
    return state.lastCommonOk;
}

int WMessageBox(int /*buttons*/, int icon, int defaultButton, std::string_view text,
                std::string_view title, BoxDuty duty) {
    ToolkitState &state = toolkitState();
    const bool isQuieted = state.boxesQuiet && duty == BoxDuty::MayBeQuieted;
    if (state.backend == nullptr || isQuieted) {
        return 1;
    }
    const WorkPause pause;
    const BoxResult result =
        state.backend->messageBox({std::string(title), splitLines(text), icon, defaultButton});
    if (state.record != nullptr) {
        state.record->answered(result);
    }
    state.boxesQuiet = state.boxesQuiet || result.quietFurther;
    return result.button;
}

void WHardcopyOptions(int /*which*/) {
    ToolkitState &toolkit = toolkitState();
    HardcopyState &state = hardcopyState();
    toolkit.lastCommonOk = false;
    if (state.isOpen() || state.driver != DriverPrinter) {
        ToolkitSetError(ErrorNoSuchDevice);
        return;
    }
    PrinterPage paper;
    std::unique_ptr<Surface> printer =
        toolkit.backend != nullptr ? toolkit.backend->printer(paper) : nullptr;
    if (toolkit.record != nullptr && toolkit.backend != nullptr) {
        toolkit.record->printed(printer != nullptr ? &paper : nullptr);
    }
    if (printer == nullptr || !(paper.width > 0.0) || !(paper.height > 0.0)) {
        state = HardcopyState{};
        return;
    }
    state.paper = paper;
    state.device = std::move(printer);
    toolkit.lastCommonOk = true;
}

void ToolkitCopyText(std::string_view text) {
    if (Backend *backend = toolkitState().backend) {
        backend->copyText(text);
    }
}

CommandEnd IOsCommand(const std::vector<std::string> &command, int /*flags*/,
                      const std::function<CommandProgress(std::string_view)> &line,
                      const DialogSpec *dialog) {
    ToolkitState &state = toolkitState();
    if (state.backend == nullptr || command.empty()) {
        ToolkitSetError(ErrorCannotRun);
        return {};
    }
    LongWork work({shortForm(command), {}, dialog});
    CommandProgress progress;
    const auto onLine = [&](std::string_view text) {
        CommandProgress now = line ? line(text) : CommandProgress{};
        if (now.total > 0.0) {
            progress = std::move(now);
            work.say(progress.words);
        }
    };
    const auto goOn = [&] {
        return work.step(progress.done, progress.total);
    };
    const RunResult result = state.backend->run(command, {onLine, goOn});
    if (state.record != nullptr) {
        state.record->ran(result);
    }
    state.closeRemembered = state.closeRemembered || result.closeAsked;
    if (result.toolkitError != 0) {
        ToolkitSetError(result.toolkitError, result.systemError);
        return {};
    }
    return {true, result.stopped, result.exitCode, result.signal};
}

} // namespace keldrin
