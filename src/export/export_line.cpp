#include "export/export_line.h"

#include "base/file_operations.h"
#include "base/file_transaction.h"
#include "base/paths.h"
#include "export/export_formats.h"
#include "messages/message_log.h"
#include "projectfile/replace_files.h"

#include <algorithm>
#include <array>
#include <new>

namespace keldrin {

namespace {

struct FileText {
    std::string path;
    std::string text;
};

/// The files of a format, or why there are none.
struct ComposedFiles {
    std::vector<FileText> files;
    std::string refusal;
};

ComposedFiles composeCsv(const ExportedLine &line, const std::string &base, ExportOutcome &) {
    CsvTables tables = csvTables(line);
    return {{{base + "_soundings.csv", std::move(tables.soundings)},
             {base + "_windows.csv", std::move(tables.windows)},
             {base + "_layers.csv", std::move(tables.layers)}},
            {}};
}

// Field data may bear the name BASE.dat; a definition of ours says that it is an earlier export.
std::string freeGdf2Base(const std::string &base) {
    const std::string beginning = gdf2Beginning();
    const bool free =
        !pathExists(base + ".dat") || fileHead(base + ".dfn", beginning.size()) == beginning;
    return free ? base : base + "_gdf2";
}

ComposedFiles composeGdf2(const ExportedLine &line, const std::string &base, ExportOutcome &) {
    Gdf2Files files = gdf2Files(line);
    const std::string own = freeGdf2Base(base);
    return {{{own + ".dfn", std::move(files.definition)}, {own + ".dat", std::move(files.data)}},
            {}};
}

ComposedFiles composeVtk(const ExportedLine &line, const std::string &base,
                         ExportOutcome &outcome) {
    VtkCurtain curtain = vtkCurtain(line);
    outcome.unplaced = curtain.unplaced;
    if (curtain.cells == 0) {
        return {{}, "no sounding has both a layered model and a position"};
    }
    return {{{base + ".vtk", std::move(curtain.text)}}, {}};
}

struct FormatRow : ExportFormatName {
    ComposedFiles (*compose)(const ExportedLine &, const std::string &base, ExportOutcome &);
};

constexpr std::array Formats = {
    FormatRow{{ExportFormat::Csv, "csv", "CSV tables"}, composeCsv},
    FormatRow{{ExportFormat::Gdf2, "gdf2", "ASEG-GDF2"}, composeGdf2},
    FormatRow{{ExportFormat::Vtk, "vtk", "VTK curtain"}, composeVtk},
};

constexpr std::array<ExportFormatName, Formats.size()> FormatNames = {Formats[0], Formats[1],
                                                                      Formats[2]};

const FormatRow &rowOf(ExportFormat format) {
    return *std::find_if(Formats.begin(), Formats.end(),
                         [=](const FormatRow &row) { return row.format == format; });
}

// All or none; blank when they were written, else why not.
std::string writeTogether(const std::vector<FileText> &files) {
    FileTransaction transaction;
    for (const FileText &file : files) {
        if (!transaction.stage(file.path, file.text)) {
            return transaction.failure();
        }
    }
    for (const FileText &file : files) {
        if (!transaction.putInPlace(file.path)) {
            return transaction.failure();
        }
    }
    return transaction.commit() ? std::string() : transaction.failure();
}

ExportResult writeFiles(const FormatRow &row, const ComposedFiles &composed) {
    ExportResult result{.format = row.format};
    if (!composed.refusal.empty()) {
        result.failure = "no " + std::string(row.words) + ": " + composed.refusal;
        ReportError({"ERROR: " + result.failure});
        return result;
    }
    const std::string failure = writeTogether(composed.files);
    if (!failure.empty()) {
        const std::string &path = composed.files.front().path;
        result.failure = path + ": " + failure;
        reportWriteFailure(path, failure);
        return result;
    }
    for (const FileText &file : composed.files) {
        result.files.push_back(file.path);
        ReportInfoLine("Exported to file " + std::string(fileNameOf(file.path)));
    }
    return result;
}

ExportResult exportAs(ExportFormat format, const ExportedLine &line, const std::string &base,
                      ExportOutcome &outcome) {
    const FormatRow &row = rowOf(format);
    try {
        return writeFiles(row, row.compose(line, base, outcome));
    } catch (const std::bad_alloc &) {
        reportWriteFailure(base, "out of memory");
        return {.format = format, .failure = base + ": out of memory"};
    }
}

} // namespace

std::span<const ExportFormatName> exportFormats() {
    return FormatNames;
}

bool ExportOutcome::failed() const {
    return std::any_of(results.begin(), results.end(),
                       [](const ExportResult &result) { return !result.failure.empty(); });
}

int ExportOutcome::written() const {
    std::size_t files = 0;
    for (const ExportResult &result : results) {
        files += result.files.size();
    }
    return static_cast<int>(files);
}

ExportOutcome ExportLine(const SurveyModel &model, std::span<const ExportFormat> formats,
                         const std::string &base) {
    ExportOutcome outcome;
    const ExportedLine line = exportedLine(model);
    outcome.soundings = static_cast<int>(line.soundings.size());
    outcome.leftOut = line.leftOut;
    for (const ExportedSounding &sounding : line.soundings) {
        outcome.windows += static_cast<int>(sounding.windows);
        outcome.layers += static_cast<int>(sounding.layers);
    }
    ReportInfoLine("");
    for (const ExportFormat format : formats) {
        outcome.results.push_back(exportAs(format, line, base, outcome));
    }
    if (outcome.leftOut > 0) {
        ReportInfoLine(std::to_string(outcome.leftOut) +
                       " soundings of other transmitters are not exported.");
    }
    if (outcome.unplaced > 0) {
        ReportInfoLine(std::to_string(outcome.unplaced) +
                       " soundings without a position are not in the VTK curtain.");
    }
    return outcome;
}

} // namespace keldrin
