#pragma once

#include "base/line_reader.h"
#include "import/import_steps.h"
#include "model/survey_model.h"
#include "text/columns.h"

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// Averaged transient records (*.avg): one text line for each window of each component of each
// transient, under column-label lines, with `$ group.keyword = value` records in between.
//
//   line, of at most 8192 bytes            kind
//   shorter than 3 without its end blanks  skipped
//   "$" in column 1 or 2                   keyword record
//   \ / ! "                                comment
//   a code from `A` to `z`                 column labels, which open a data section
//   anything else                          data, while the last label line was good
//
//   #  variable     read as  column absent   cell unreadable  use
//   1  SKIP         integer  2               2                2 good, any other skipped
//   2  TX.QDRSTN    real*8   Tx.QdrStn       missing          transmitter station
//   3  RX.QDRSTN    real*8   Rx.QdrStn       missing          receiver station
//   4  RX.CMP       text 4   Rx.Cmp          line dropped     component
//   5  TX.FREQ      real*4   Tx.Freq         0                base frequency, Hz
//   6  TX.AMP       real*4   Tx.Amp          missing          current, checked only
//   7  TWIN.INDEX   not read
//   8  TWIN.CENTER  real*4   required        missing          window centre, msec
//   9  TWIN.BEG     real*4   missing         missing          window start, msec
//  10  TWIN.END     real*4   missing         missing          window end, msec
//  11  DBDT.MAG     real*4   required        line dropped     magnitude, uV/A
//  12  DBDT.ERR     real*4   missing         missing          absolute error, uV/A; missing:
//                                                             percent error
//  13  DBDT.%ERR    real*4   1               0                percent error
//  14  DBDT.WGT     real*4   1               0                at or below 1.0E-5: skipped
//  15  ARES.MAG     real*4   missing         0                tested for form, not used
//  16  DEPTH.IMAGE  real*4   missing         0                tested for form, not used
//  17  B.MAG        real*4   missing         0                tested for form, not used

enum AvgVariable : std::size_t {
    AvgSkip,
    AvgTxStn,
    AvgRxStn,
    AvgComponent,
    AvgFreq,
    AvgAmp,
    AvgWindowIndex,
    AvgTime,
    AvgTimeBeg,
    AvgTimeEnd,
    AvgMag,
    AvgErr,
    AvgPercentErr,
    AvgWeight,
    AvgARes,
    AvgDepth,
    AvgB,
    AvgVariables
};

inline constexpr std::array<std::string_view, AvgVariables> AvgNames = {
    "SKIP",       "TX.QDRSTN",   "RX.QDRSTN", "RX.CMP",      "TX.FREQ",  "TX.AMP",
    "TWIN.INDEX", "TWIN.CENTER", "TWIN.BEG",  "TWIN.END",    "DBDT.MAG", "DBDT.ERR",
    "DBDT.%ERR",  "DBDT.WGT",    "ARES.MAG",  "DEPTH.IMAGE", "B.MAG"};

/// Labels of older files and what they are called now, sorted by label.
std::span<const LabelAlias> avgAliases();

inline constexpr int AvgMaxColumns = 32;
inline constexpr std::size_t AvgLabelWidth = 32;
inline constexpr std::size_t AvgLineLimit = 8192;
inline constexpr int AvgSourceLevel = 2; ///< of the file's keyword records

/// Counting pass: finds every survey line and counts its transients into the line table, then
/// takes array, station rescaling and coil areas into the preset.
/// returns  0, or 1 when the file cannot be read or holds no data (reported), or 1 without a
///          message when it does not exist or the user has stopped the reading
int AVG_Count(SurveyModel &model, const std::string &fileName);

/// Reading pass over the lines of one LineLabel, after STD_Allocate_hTrn. Fills the soundings and
/// their count; repeated readings are merged by inverse-variance weights.
/// returns  0, or 1 when nothing was read, the file failed, its last label line was bad or the
///          user has stopped the reading
int AVG_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel);

/// The label line of the section that the walk is in.
struct AvgLabels {
    int record = 0;
    std::string line;
    ColumnMap columns;
    std::vector<std::string_view> missing; ///< required columns that it does not name
};

/// The one walk over a file that both passes make.
struct AvgWalk {
    LineReader reader{AvgLineLimit};
    std::string name;                 ///< of the file, for messages
    AvgLabels labels;                 ///< of the current section
    std::optional<AvgLabels> pending; ///< read and without data so far
    LineIdentity identity;
    SplitCells cells;
    bool LabelsValid = false;
    bool HeaderChanged = false;
    bool faulted = false;     ///< a line could not be read from the disk
    bool quiet = false;       ///< the second pass: what the first one has reported is not repeated
    LineNotice emptySections; ///< label lines that no data follow
    LineNotice commas;        ///< data lines with decimal commas
    /// Called after each keyword record.
    std::function<void(int record, std::string_view line)> recordTaken;

    bool open(const std::string &fileName);

    /// Goes to the next data line, on the way handing keyword records to the metadata and taking
    /// label lines. `line` is left-adjusted. False at the end of the file or at a read error
    /// (reported). A label line whose required columns are missing is reported once data stand
    /// below it; one without data is ignored.
    bool nextDataLine(Metadata &metadata, std::string_view &line);

    /// Reports, at the end of the first pass, what nextDataLine() has noted.
    void reportNotices() const;

    [[nodiscard]] int record() const { return reader.lineNumber(); }
    /// The cell of a variable, blank without a column.
    [[nodiscard]] std::string_view cell(AvgVariable variable) const {
        return cells.column(labels.columns.iVarCol[variable]);
    }
    [[nodiscard]] bool hasColumn(AvgVariable variable) const {
        return labels.columns.iVarCol[variable] > 0;
    }

  private:
    void takeLabels(std::string_view line);
    bool takeDataLine(std::string_view line);
};

/// Components of an AVG file: which are dB/dt.
inline constexpr int FirstMagneticComponent = 4; ///< HX; EX, EY and EZ are counted and not read
inline constexpr int LastMagneticComponent = 6;  ///< HZ

/// The component of a text: 1..6 for EX EY EZ HX HY HZ, 7 and 8 for reference and off, 9 for any
/// other word; 0 for a blank text or one that holds "*".
int avgComponent(std::string_view text, std::string_view label);

} // namespace keldrin
