#include "text/columns.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "messages/message_log.h"

#include <algorithm>
#include <iterator>

namespace keldrin {

namespace {

void clearMap(std::size_t variables, std::size_t columns, ColumnMap &map) {
    map.iVarCol.assign(variables, 0);
    map.iColVar.assign(columns, 0);
    map.nCols = static_cast<int>(columns);
}

void join(std::size_t variable, std::size_t column, ColumnMap &map) {
    map.iVarCol[variable] = static_cast<int>(column) + 1;
    map.iColVar[column] = static_cast<int>(variable) + 1;
}

bool matches(std::string_view label, std::string_view name, bool exact) {
    const std::string_view wanted = trimRight(name);
    return exact ? trimRight(label) == wanted : holds(label, wanted);
}

std::vector<std::string> upperLabels(const SplitCells &labels) {
    std::vector<std::string> upper;
    std::transform(labels.cells.begin(), labels.cells.end(), std::back_inserter(upper), Str_Upper);
    return upper;
}

/// Gives a variable the first free column whose label matches; false when there is none.
bool takeColumn(std::size_t variable, std::string_view name, const std::vector<std::string> &labels,
                bool exact, ColumnMap &map) {
    for (std::size_t column = 0; column < labels.size(); ++column) {
        if (map.iColVar[column] == 0 && matches(labels[column], name, exact)) {
            join(variable, column, map);
            return true;
        }
    }
    return false;
}

/// Status 1, with a report, when variables without a column are asked for and there are any.
template <class NameOf>
int reportMissingColumns(const LabelMatch &options, const ColumnMap &map, NameOf nameOfVariable) {
    std::string names;
    int missing = 0;
    for (std::size_t variable = 0; variable < map.iVarCol.size(); ++variable) {
        if (map.iVarCol[variable] == 0) {
            names += missing++ > 0 ? ", " : "";
            names += trimRight(nameOfVariable(variable));
        }
    }
    if (!options.reportMissing || missing == 0) {
        return 0;
    }
    ReportError(
        {missing > 1 ? "ERROR: Could not find columns" : "ERROR: Could not find column", names});
    return 1;
}

int matchNames(const SplitCells &cells, const LabelMatch &options,
               std::span<const std::string_view> VarNames, ColumnMap &map) {
    const std::vector<std::string> labels = upperLabels(cells);
    clearMap(VarNames.size(), labels.size(), map);
    for (std::size_t variable = 0; variable < VarNames.size(); ++variable) {
        takeColumn(variable, VarNames[variable], labels, options.exactMatch, map);
    }
    return reportMissingColumns(options, map, [&](std::size_t k) { return VarNames[k]; });
}

} // namespace

std::string_view aliasOf(std::string_view label, std::span<const LabelAlias> aliases) {
    // the early end is part of the meaning of a table: an entry out of order hides those after it
    const std::string_view wanted = trimRight(label);
    for (const LabelAlias &alias : aliases) {
        const int order = trimRight(alias.label).compare(wanted);
        if (order == 0) {
            return alias.variable;
        }
        if (order > 0) {
            break;
        }
    }
    return label;
}

int Str_Column_Labels_Alias(std::string_view line, const LabelMatch &options,
                            std::span<const LabelAlias> aliases,
                            std::span<const std::string_view> VarNames, ColumnMap &map) {
    SplitCells cells;
    Str_Split_Columns(line, options.maxCols, options.width, cells);
    const std::vector<std::string> labels = upperLabels(cells);
    clearMap(VarNames.size(), labels.size(), map);
    for (std::size_t column = 0; column < labels.size(); ++column) {
        const std::string_view label = aliasOf(labels[column], aliases);
        for (std::size_t variable = 0; variable < VarNames.size(); ++variable) {
            if (map.iVarCol[variable] == 0 &&
                matches(label, VarNames[variable], options.exactMatch)) {
                join(variable, column, map);
                break;
            }
        }
    }
    return reportMissingColumns(options, map, [&](std::size_t k) { return VarNames[k]; });
}

int Str_Column_Labels(std::string_view line, const LabelMatch &options,
                      std::span<const std::string_view> VarNames, ColumnMap &map) {
    SplitCells cells;
    Str_Split_Columns(line, options.maxCols, options.width, cells);
    return matchNames(cells, options, VarNames, map);
}

int Str_Column_Labels_Synonyms(std::string_view line, const LabelMatch &options,
                               std::span<const std::vector<std::string_view>> synonyms,
                               ColumnMap &map) {
    SplitCells cells;
    Str_Split_Columns(line, options.maxCols, options.width, cells);
    const std::vector<std::string> labels = upperLabels(cells);
    clearMap(synonyms.size(), labels.size(), map);
    for (std::size_t variable = 0; variable < synonyms.size(); ++variable) {
        std::any_of(synonyms[variable].begin(), synonyms[variable].end(), [&](auto name) {
            return takeColumn(variable, name, labels, options.exactMatch, map);
        });
    }
    return reportMissingColumns(options, map, [&](std::size_t k) {
        return synonyms[k].empty() ? std::string_view{} : synonyms[k].front();
    });
}

int Str_Column_Labels_Csv(std::string_view line, const LabelMatch &options,
                          std::span<const std::string_view> VarNames, ColumnMap &map,
                          int &highestColumn) {
    ReportInfoLine("Parsing column labels on line:");
    ReportInfoLine(cutText(line, 128));
    SplitCells cells;
    Str_Split_Csv(line, options.maxCols, options.width, cells);
    const int status = matchNames(cells, options, VarNames, map);
    highestColumn =
        map.iVarCol.empty() ? 0 : *std::max_element(map.iVarCol.begin(), map.iVarCol.end());
    return status;
}

} // namespace keldrin
