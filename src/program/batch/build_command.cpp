#include "program/batch/command.h"

#include "base/paths.h"
#include "base/temporary_names.h"
#include "conditioning/configuration_dialog.h"
#include "conditioning/data_input_dialog.h"
#include "messages/message_log.h"
#include "model/survey_model.h"
#include "program/batch/output_files.h"
#include "program/batch/run_names.h"
#include "projectfile/project_file.h"
#include "shell/new_model.h"
#include "text/enumeration.h"
#include "toolkit/control_ids.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace keldrin {

namespace {

constexpr int AllLines = 0;

struct BuildOptions {
    std::string outputDirectory; ///< blank: beside each file
    std::optional<int> line;     ///< 1-based, or AllLines; none: the first
    std::vector<std::string> files;
};

/// What became of one line of one file.
struct BuildResult {
    bool built = false;
    bool messagesNamed = true; ///< log and error file lie under their names
    std::string project;       ///< path of the project
    int linesInFile = 0;
    int soundings = 0;
    int windows = 0;
    int skipped = 0;
    int warnings = 0;
    std::vector<std::string> unread; ///< side files that exist and could not be read
    std::string reason;              ///< of a failure, in one line
};

std::string oneLine(std::span<const MessageLine> lines) {
    std::string text;
    for (const MessageLine &line : lines) {
        text.append(text.empty() ? "" : "; ").append(line.view());
    }
    // A line of a file that is no text stays one harmless line of output.
    std::replace_if(
        text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '?');
    return text;
}

// The first error is the reason of a failure.
void countMessages(BuildResult &result) {
    const MessageRecord &record = messageLog().record;
    result.warnings = record.warnings + record.errors;
    result.unread = record.unreadFiles;
    result.reason = oneLine(record.firstError);
}

void countWindows(const SurveyModel &model, BuildResult &result) {
    result.soundings = model.SoundingCount;
    for (const SoundingRecord &record : model.soundings()) {
        const auto *first = record.TEMerr.begin();
        result.windows += record.NumTW;
        result.skipped += static_cast<int>(std::count_if(first, first + record.NumTW, isSkipped));
    }
}

std::string directoryFor(const std::string &file, const BuildOptions &options) {
    const std::string directory =
        options.outputDirectory.empty() ? std::string(directoryOf(file)) : options.outputDirectory;
    return directory.empty() ? "." : directory;
}

// The messages get the name of the project or, without one, of the data file.
bool nameLogs(const std::string &base) {
    MessageLog &log = messageLog();
    log.file.reset();
    bool good = true;
    for (const auto &[path, extension] :
         {std::pair{log.logPath, ".log"}, std::pair{log.errorPath, ".err"}}) {
        const std::string wanted = base + extension;
        std::string failure;
        const std::string kept = nameMessageFile(path, wanted, failure);
        if (!kept.empty()) {
            std::printf("%s: not of this program, kept as %s\n", wanted.c_str(), kept.c_str());
        }
        if (!failure.empty()) {
            std::fprintf(stderr, "keldrin-batch build: cannot write %s: %s\n", wanted.c_str(),
                         failure.c_str());
            good = false;
        }
    }
    return good;
}

// Every file is built as by a run of its own: nothing of an earlier one is remembered. Its messages
// lie under a temporary name until the name of the project is known.
void startAfresh(const std::string &file, const BuildOptions &options) {
    messageLog() = MessageLog{};
    enumerationMemo() = EnumerationMemo{};
    const std::string directory = directoryFor(file, options);
    removeLeftOvers(directory);
    OpenLogFiles(temporaryName(directory));
}

BuildResult buildLine(AnsweringBackend &backend, const std::string &file,
                      const BuildOptions &options, MadeProjects &made, int line) {
    BuildResult result;
    WriteOutcome outcome;
    startAfresh(file, options);
    SurveyModel model;
    bool lineMissing = false;
    backend.beforeAnswer = [&](AnsweringBackend &answers, int dialog) {
        const LineTable &lines = model.lines;
        if (dialog == DataInputDialog.number) {
            result.linesInFile = lines.LineCount;
            lineMissing = line > lines.LineCount;
            if (lineMissing) {
                answers.pressInstead(ButtonCancel);
            } else {
                answers.edit(DataInputControl::Line, "#" + std::to_string(line));
            }
        }
        if (dialog == ConfigurationDialog.number) {
            std::string base(baseNameOf(file));
            if (lines.LineCount > 1) {
                base = nameWithLine(base, model.control.LineName.view());
            }
            const std::string free = made.freeBase(directoryFor(file, options), base);
            if (free != baseNameOf(file)) {
                answers.edit(ConfigurationControl::SaveAs, free);
            }
        }
    };
    result.project = file;
    const int status = BuildNewModel(model, result.project, {options.outputDirectory, &outcome});
    result.built = status == 0 && outcome.written;
    countMessages(result);
    if (!outcome.failure.empty()) {
        result.reason = "the project cannot be written: " + outcome.failure;
    }
    if (result.built) {
        countWindows(model, result);
    } else if (lineMissing) {
        result.reason = "there are only " + std::to_string(result.linesInFile) + " lines";
    }
    const std::string directory = directoryFor(file, options);
    const std::string base =
        result.built ? std::string(withoutExtension(result.project))
                     : joinPath(directory, made.freeBase(directory, std::string(baseNameOf(file))));
    made.add(base + ".std");
    result.messagesNamed = nameLogs(base);
    messageLog() = MessageLog{};
    return result;
}

void printResult(const std::string &file, const BuildResult &result) {
    std::string text = file + ": ";
    if (result.built) {
        text += result.project + ", " + std::to_string(result.soundings) + " soundings, " +
                std::to_string(result.windows) + " windows, " + std::to_string(result.skipped) +
                " skipped, " + std::to_string(result.warnings) + " warnings";
        for (const std::string &name : result.unread) {
            text += ", FAILED to read " + name;
        }
    } else {
        text += "FAILED: " + (result.reason.empty() ? "cancelled" : result.reason);
    }
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}

bool buildFile(AnsweringBackend &backend, const std::string &file, const BuildOptions &options,
               MadeProjects &made) {
    const bool all = options.line == AllLines;
    int line = all ? 1 : options.line.value_or(1);
    bool good = true;
    int linesInFile = 1;
    do {
        const BuildResult result = buildLine(backend, file, options, made, line);
        printResult(file, result);
        good = good && result.built && result.unread.empty() && result.messagesNamed;
        linesInFile = result.linesInFile;
        ++line;
    } while (all && line <= linesInFile);
    if (!options.line && linesInFile > 1) {
        std::printf("%s: line 1 of %d; --line N or --line all builds the others\n", file.c_str(),
                    linesInFile);
    }
    return good;
}

bool readLineOption(std::string_view word, BuildOptions &options) {
    if (word == "all") {
        options.line = AllLines;
        return true;
    }
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    options.line = number;
    return error == std::errc{} && end == word.data() + word.size() && number >= 1;
}

// Empty when the words can be used, else what is wrong with them.
std::string readOptions(CommandWords words, BuildOptions &options) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        const bool takesValue = word == "--out" || word == "--line";
        if (takesValue && i + 1 == words.size()) {
            return std::string(word) + " needs a value";
        }
        if (word == "--out") {
            options.outputDirectory = words[++i];
        } else if (word == "--line") {
            if (!readLineOption(words[++i], options)) {
                return "--line takes a number from 1, or all";
            }
        } else if (word.substr(0, 2) == "--" && word.size() > 2) {
            return "unknown option " + std::string(word);
        } else if (word != "--") {
            options.files.emplace_back(word);
        }
    }
    return options.files.empty() ? "no file is named" : "";
}

} // namespace

int buildCommand(CommandWords words) {
    BuildOptions options;
    const std::string fault = readOptions(words, options);
    if (!fault.empty()) {
        std::fprintf(stderr, "keldrin-batch build: %s\n", fault.c_str());
        return ExitUsage;
    }
    AnsweringBackend backend;
    MadeProjects made;
    return runOverFiles("keldrin-batch build", backend, options.files, options.outputDirectory,
                        [&](const std::string &file, bool /*taken*/) {
                            return buildFile(backend, file, options, made);
                        });
}

} // namespace keldrin
