#include "engine/project_cells.h"

#include "base/safe_writer.h"
#include "projectfile/control_group.h"
#include "projectfile/data_columns.h"
#include "projectfile/project_file.h"
#include "text/columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace keldrin {

namespace {

constexpr std::array CalculatedColumns = {ColTEMcalc, ColAResObs, ColAResCalc};
using CalculatedTexts = std::array<std::string, CalculatedColumns.size()>;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

/// A line of a text: what the reader sees of it, and what follows up to the next line.
struct TextLine {
    std::string_view content; ///< as far as the reader keeps it
    std::string_view rest;    ///< cut off, with the line end
};

/// Takes lines off a text by the rules of LineReader.
class TextLines {
  public:
    explicit TextLines(std::string_view text) : text_(text) {}

    bool next(TextLine &line) {
        if (text_.empty()) {
            return false;
        }
        const std::size_t end = std::min(text_.find('\n'), text_.size());
        std::string_view content = text_.substr(0, end);
        content = content.substr(0, content.find('\x1A'));
        if (!content.empty() && content.back() == '\r') {
            content.remove_suffix(1);
        }
        content = cutText(content, MostTableLine);
        const std::size_t taken = std::min(end + 1, text_.size());
        line = {content, text_.substr(content.size(), taken - content.size())};
        text_.remove_prefix(taken);
        return true;
    }

  private:
    std::string_view text_;
};

/// Puts a text into a cell (from 1) of a line; cells that the line lacks are added.
void setCell(std::string &line, std::size_t cell, std::string_view text) {
    const std::vector<CellPlace> places = cellPlaces(line);
    if (cell <= places.size()) {
        const CellPlace &place = places[cell - 1];
        if (text.empty() && !place.mayBeEmpty) {
            text = "*";
        }
        line.replace(place.begin, place.end - place.begin, text);
        return;
    }
    std::size_t end = line.size();
    while (end > 0 && isBlank(line[end - 1])) {
        --end;
    }
    const bool open = end > 0 && line[end - 1] == ','; // the next cell has its comma already
    const std::size_t commas = cell - places.size() - (open ? 1 : 0);
    line.insert(end, std::string(commas, ',').append(text));
}

/// The text of a calculated value as the project writer puts it, blank where it is missing.
std::string cellText(DataColumn column, float value) {
    RowValues values{};
    values[0] = static_cast<double>(value);
    std::string text;
    appendTableRow(text, std::span(&DataColumns[column], 1), values);
    text.resize(text.size() - LineEnd.size());
    return text;
}

/// Calculated values of a window in the units of the file.
std::array<float, CalculatedColumns.size()> fileValues(const SurveyModel &model, int unitsIndex,
                                                       const SoundingRecord &record,
                                                       std::size_t window) {
    float calculated = record.TEMcalc[window];
    if (isPresent(calculated) && unitsIndex == MicrovoltPerAmpere) {
        calculated = calculated * model.control.RxArea / 1000.0F;
    }
    return {calculated, record.AResObs[window], record.AResCalc[window]};
}

/// Rewrites the lines of a text.
class Rewriting {
  public:
    Rewriting(std::string_view original, const DataTableLines &lines, const SurveyModel &model,
              const std::vector<char> &changed, const EngineRun &run)
        : original_(original), lines_(lines), model_(model), changed_(changed), run_(run),
          columns_(lines.labels.size()), added_(lines.labels.size()) {}

    RewrittenProject run() {
        placeColumns();
        RewrittenProject result;
        result.text.reserve(original_.size() + original_.size() / 4);
        std::size_t labels = 0;
        std::size_t row = 0;
        TextLines text(original_);
        TextLine line;
        for (int number = 1; !run_.stopped() && text.next(line); ++number) {
            std::string content(line.content);
            while (labels < lines_.labels.size() && lines_.labels[labels].line <= number) {
                if (lines_.labels[labels].line == number) {
                    writeLabels(content, labels);
                }
                ++labels;
            }
            if (row < lines_.rows.size() && lines_.rows[row].line == number) {
                writeRow(content, row);
                ++row;
            }
            result.text.append(content).append(line.rest);
        }
        result.without = without_;
        return result;
    }

  private:
    /// Finds a place for each calculated column under each line of labels.
    void placeColumns() {
        std::vector<std::size_t> widest(lines_.labels.size(), 0);
        TextLines text(original_);
        TextLine line;
        std::size_t labels = 0;
        std::size_t row = 0;
        for (int number = 1; !run_.stopped() && text.next(line); ++number) {
            const bool isLabels =
                labels < lines_.labels.size() && lines_.labels[labels].line == number && number > 0;
            while (labels < lines_.labels.size() && lines_.labels[labels].line <= number) {
                ++labels;
            }
            if (isLabels) {
                widest[labels - 1] = std::max(widest[labels - 1], cellPlaces(line.content).size());
            }
            if (row < lines_.rows.size() && lines_.rows[row].line == number) {
                std::size_t &most = widest[lines_.rows[row].labels];
                most = std::max(most, cellPlaces(line.content).size());
                ++row;
            }
        }
        for (std::size_t i = 0; i < lines_.labels.size(); ++i) {
            placeUnder(i, widest[i]);
        }
    }

    void placeUnder(std::size_t labels, std::size_t widest) {
        for (std::size_t c = 0; c < CalculatedColumns.size(); ++c) {
            const DataColumn column = CalculatedColumns[c];
            const int present = lines_.labels[labels].column[column];
            std::size_t &place = columns_[labels][c];
            place = static_cast<std::size_t>(std::max(0, present));
            if (present > 0) {
                continue;
            }
            if (lines_.labels[labels].line > 0 && widest < MostTableColumns) {
                place = ++widest;
                added_[labels][c] = true;
            } else {
                without_.emplace_back(DataColumns[column].written);
            }
        }
    }

    void writeLabels(std::string &line, std::size_t labels) const {
        for (std::size_t c = 0; c < CalculatedColumns.size(); ++c) {
            if (added_[labels][c]) {
                setCell(line, columns_[labels][c], DataColumns[CalculatedColumns[c]].written);
            }
        }
    }

    void writeRow(std::string &line, std::size_t row) {
        const SoundingRecord &record = model_.hTrn[sounding_];
        const std::size_t window = window_;
        const bool wanted = changed_[sounding_] != 0;
        if (++window_ == windowCount(record)) {
            window_ = 0;
            ++sounding_;
        }
        if (!wanted) {
            return;
        }
        const std::size_t labels = lines_.rows[row].labels;
        const auto values = fileValues(model_, lines_.unitsIndex, record, window);
        for (std::size_t c = 0; c < CalculatedColumns.size(); ++c) {
            const std::size_t place = columns_[labels][c];
            const std::string text = cellText(CalculatedColumns[c], values[c]);
            const bool there = place <= cellPlaces(line).size();
            if (place > 0 && (there || added_[labels][c] || !text.empty())) {
                setCell(line, place, text);
            }
        }
    }

    std::string_view original_;
    const DataTableLines &lines_;
    const SurveyModel &model_;
    const std::vector<char> &changed_;
    const EngineRun &run_;
    std::vector<std::array<std::size_t, CalculatedColumns.size()>> columns_; ///< 0: no place
    std::vector<std::array<bool, CalculatedColumns.size()>> added_;
    std::vector<std::string> without_;
    std::size_t sounding_ = 0; ///< whose row comes next
    std::size_t window_ = 0;
};

bool isClose(float wanted, float got, float tolerance, bool aboveZero) {
    const float least = aboveZero ? 0.0F : -9.9E31F; // written only above it
    if (!(wanted > least) || !(got > least)) {
        return !(wanted > least) && !(got > least);
    }
    return std::fabs(wanted - got) <= tolerance * std::fabs(wanted);
}

/// What the new text must give when it is read again.
bool readsAs(const SoundingRecord &wanted, const SoundingRecord &got, bool changed,
             const std::vector<std::string> &without) {
    if (wanted.NumTW != got.NumTW || wanted.RxStn != got.RxStn || wanted.TxStn != got.TxStn) {
        return false;
    }
    const auto lacks = [&](DataColumn column) {
        return std::find(without.begin(), without.end(), DataColumns[column].written) !=
               without.end();
    };
    for (std::size_t k = 0; k < windowCount(wanted); ++k) {
        const bool same = wanted.TWcenter[k] == got.TWcenter[k] &&
                          wanted.TEMobs[k] == got.TEMobs[k] && wanted.TEMerr[k] == got.TEMerr[k];
        const bool filled =
            !changed ||
            ((lacks(ColTEMcalc) || isClose(wanted.TEMcalc[k], got.TEMcalc[k], 1.0E-4F, false)) &&
             (lacks(ColAResObs) || isClose(wanted.AResObs[k], got.AResObs[k], 1.0E-3F, true)) &&
             (lacks(ColAResCalc) || isClose(wanted.AResCalc[k], got.AResCalc[k], 1.0E-3F, true)));
        if (!same || !filled) {
            return false;
        }
    }
    return true;
}

std::string faultOf(const std::string &text, const SurveyModel &model,
                    const std::vector<char> &changed, const std::vector<std::string> &without,
                    const std::string &path, const EngineRun &run) {
    LineReader reader(MostGroupLine);
    reader.openText(text);
    reader.watch([&run](std::uintmax_t, std::uintmax_t) { return !run.stopped(); });
    SurveyModel again;
    DataTableLines linesAgain;
    std::string fault = "with the calculated values in it the table would not be read as "
                        "before; is a row longer than " +
                        std::to_string(MostTableLine) + " bytes?";
    if (STD_File_Read_Text(again, reader, path, linesAgain) != 0 ||
        again.SoundingCount != model.SoundingCount) {
        return fault;
    }
    for (std::size_t i = 0; i < changed.size(); ++i) {
        if (!readsAs(model.hTrn[i], again.hTrn[i], changed[i] != 0, without)) {
            return fault;
        }
    }
    return "";
}

} // namespace

std::vector<CellPlace> cellPlaces(std::string_view line) {
    std::vector<CellPlace> places;
    bool inQuote = false;
    bool atSeparator = true;
    bool commaBefore = true; // or the start of the line
    std::size_t first = 0;
    const auto add = [&](std::size_t end, bool commaAfter) {
        places.push_back({first, end, commaBefore && commaAfter});
        atSeparator = true;
        commaBefore = commaAfter;
    };
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"') {
            first = atSeparator ? i : first;
            inQuote = !inQuote;
            atSeparator = atSeparator && !inQuote;
        } else if (inQuote) {
            continue;
        } else if (c == ',') {
            first = atSeparator ? i : first;
            add(i, true);
        } else if (isBlank(c)) {
            if (!atSeparator) {
                std::size_t next = i;
                while (next < line.size() && isBlank(line[next])) {
                    ++next;
                }
                const bool ends = next == line.size();
                const bool comma = !ends && line[next] == ',';
                add(i, comma || ends);
                i = comma ? next : next - 1;
            }
        } else if (atSeparator) {
            first = i;
            atSeparator = false;
        }
    }
    if (!atSeparator) {
        add(line.size(), true);
    }
    return places;
}

RewrittenProject rewriteCells(std::string_view original, const DataTableLines &lines,
                              const SurveyModel &model, const std::vector<char> &changed,
                              const std::string &path, const EngineRun &run) {
    RewrittenProject result = Rewriting(original, lines, model, changed, run).run();
    std::sort(result.without.begin(), result.without.end());
    result.without.erase(std::unique(result.without.begin(), result.without.end()),
                         result.without.end());
    result.fault = faultOf(result.text, model, changed, result.without, path, run);
    return result;
}

} // namespace keldrin
