#include "program/batch/command.h"

#include "base/paths.h"
#include "export/export_line.h"
#include "program/batch/batch_project.h"
#include "program/batch/option_words.h"
#include "program/batch/output_files.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace keldrin {

namespace {

struct ExportOptions {
    std::vector<ExportFormat> formats;
    std::string outputDirectory; ///< blank: beside each project
    std::vector<std::string> files;
};

std::string formatNames() {
    std::vector<std::string_view> names;
    for (const ExportFormatName &row : exportFormats()) {
        names.push_back(row.name);
    }
    return inWords(names);
}

// A format that is named twice is written once.
bool readFormats(std::string_view list, std::vector<ExportFormat> &formats) {
    formats.clear();
    for (const std::string_view name : listWords(list)) {
        const auto known = exportFormats();
        const auto found = std::find_if(known.begin(), known.end(),
                                        [&](const auto &row) { return row.name == name; });
        if (found == known.end()) {
            return false;
        }
        if (std::find(formats.begin(), formats.end(), found->format) == formats.end()) {
            formats.push_back(found->format);
        }
    }
    return true;
}

// Empty when the words can be used, else what is wrong with them.
std::string readOptions(CommandWords words, ExportOptions &options) {
    options.formats = {exportFormats().front().format};
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        const bool takesValue = word == "--out" || word == "--format";
        if (takesValue && i + 1 == words.size()) {
            return std::string(word) + " needs a value";
        }
        if (word == "--out") {
            options.outputDirectory = words[++i];
        } else if (word == "--format") {
            if (!readFormats(words[++i], options.formats)) {
                return "--format takes " + formatNames() + ", with commas between them";
            }
        } else if (word.substr(0, 2) == "--" && word.size() > 2) {
            return "unknown option " + std::string(word);
        } else if (word != "--") {
            options.files.emplace_back(word);
        }
    }
    return options.files.empty() ? "no project is named" : "";
}

std::string counted(const ExportOutcome &outcome) {
    std::string text = std::to_string(outcome.soundings) + " soundings, " +
                       std::to_string(outcome.windows) + " windows, " +
                       std::to_string(outcome.layers) + " layers, " +
                       std::to_string(outcome.written()) + " files";
    if (outcome.leftOut > 0) {
        text += ", " + std::to_string(outcome.leftOut) + " of other transmitters left out";
    }
    if (outcome.unplaced > 0) {
        text += ", " + std::to_string(outcome.unplaced) + " without a position not in the curtain";
    }
    return text;
}

bool exportProject(const std::string &file, bool taken, const ExportOptions &options) {
    BatchProject project;
    std::string done;
    if (taken) {
        project.fail("an earlier project has made files of these names");
    } else if (project.open(file)) {
        const std::string beside =
            options.outputDirectory.empty()
                ? project.path
                : joinPath(options.outputDirectory, fileNameOf(project.path));
        const ExportOutcome outcome =
            ExportLine(project.model, options.formats, std::string(withoutExtension(beside)));
        done = counted(outcome);
    }
    project.printLine(file, done);
    return !project.failed();
}

} // namespace

int exportTablesCommand(CommandWords words) {
    ExportOptions options;
    const std::string fault = readOptions(words, options);
    if (!fault.empty()) {
        std::fprintf(stderr, "keldrin-batch export: %s\n", fault.c_str());
        return ExitUsage;
    }
    AnsweringBackend backend;
    return runOverFiles(
        "keldrin-batch export", backend, options.files, options.outputDirectory,
        [&](const std::string &file, bool taken) { return exportProject(file, taken, options); });
}

} // namespace keldrin
