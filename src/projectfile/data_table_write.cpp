#include "projectfile/data_table.h"

#include "base/clock.h"
#include "base/safe_writer.h"
#include "base/version.h"
#include "projectfile/data_columns.h"
#include "projectfile/replace_files.h"

#include <algorithm>
#include <cmath>

namespace keldrin {

namespace {

constexpr std::size_t ColMisfit = ColTEMcalc + 1;

/// The data table with the misfit between TEMcalc and AResObs.
constexpr auto ExportColumns = [] {
    std::array<TableColumn, DataColumnCount + 1> columns{};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i] = DataColumns[i < ColMisfit ? i : i - 1];
    }
    columns[ColMisfit] = {
        "TEM%DIFF",   "TEM%diff", "%",   std::monostate{},    CellType::R4, data_formats::Voltage,
        MissingValue, 0,          false, EmptyCell::IfMissing};
    return columns;
}();

/// Percent of the larger magnitude; missing without a calculated value.
float misfit(float observed, float calculated) {
    if (!isPresent(calculated)) {
        return MissingValue;
    }
    const float larger = std::max(std::fabs(observed), std::fabs(calculated));
    return 100.0F * (observed - calculated) / (larger + 1.0E-8F);
}

/// Appends the rows of all soundings that are written; `computeFields` fills in what no record
/// holds.
template <class Compute>
WrittenTable appendRows(std::string &out, const SurveyModel &model,
                        std::span<const TableColumn> columns, Compute computeFields) {
    WrittenTable written;
    RowValues values{};
    for (const SoundingRecord &record : model.soundings()) {
        if (isLeftOut(model.control, record)) {
            ++written.leftOut;
            continue;
        }
        loadSoundingFields(columns, record, values);
        written.soundings += record.NumTW > 0 ? 1 : 0;
        for (std::size_t window = 0; window < windowCount(record); ++window) {
            loadElementFields(columns, record, window, values);
            computeFields(record, window, values);
            appendTableRow(out, columns, values);
            ++written.rows;
        }
    }
    return written;
}

} // namespace

std::size_t dataTableRoom(const SurveyModel &model) {
    constexpr std::size_t usualRow = 128;
    std::size_t rows = 1;
    for (const SoundingRecord &record : model.soundings()) {
        rows += windowCount(record);
    }
    return rows * usualRow;
}

WrittenTable appendDataRows(std::string &out, const SurveyModel &model) {
    return appendRows(out, model, DataColumns,
                      [](const SoundingRecord &, std::size_t, RowValues &) {});
}

WriteOutcome STD_Table_Export(const SurveyModel &model, const std::string &path) {
    const DateTime now = clockNow();
    std::string text;
    appendLabelLine(text, ExportColumns);
    text.append("\"From ").append(ProgramIdentity).append(" Date:").append(dateText(now));
    text.append(" Time:").append(timeText(now)).append("\"").append(LineEnd);
    appendRows(text, model, ExportColumns,
               [](const SoundingRecord &record, std::size_t window, RowValues &values) {
                   values[ColMisfit] =
                       static_cast<double>(misfit(record.TEMobs[window], record.TEMcalc[window]));
               });
    WriteOutcome outcome = writeWholeFile(path, text);
    if (!outcome.written) {
        reportWriteFailure(path, outcome.failure);
    }
    return outcome;
}

} // namespace keldrin
