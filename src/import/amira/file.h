#pragma once

#include "base/line_reader.h"
#include "import/amira/keywords.h"
#include "import/import_steps.h"
#include "model/survey_model.h"
#include "text/columns.h"

#include <array>
#include <string>
#include <string_view>

namespace keldrin {

// AMIRA TEM text (*.amr, *.tem, *.dat): a title line, keywords, a line of column labels, then one
// row for each reading with all its channels, and keywords in between. The times of the channels
// stand in a channel file beside it or in keyword lists (import/amira/times.h).
//
//   line                                 kind
//   the first                            title, ignored
//   \ ! and, above the labels, "/ "      comment
//   /                                    keyword (import/amira/keywords.h)
//   ":" or "=" after its first byte      keywords
//   a code from `A` to `z`               labels, above the rows; among them when they name both
//                                        required columns
//   anything else                        ignored above the labels, a row below them
//
//   variable    read as          use
//   STATION     number in text   receiver station; required
//   LINE        text and number  survey line
//   LOOP        number in text   loop number, transmitter station of arrays that move
//   EAST        number in text   of the station
//   NORTH       number in text
//   ELEVATION   number in text
//   XTXLENGTH   real*4           side of the loop
//   CURRENT     real*4           A
//   TURNOFF     real*4           ramp, msec
//   COMPONENT   text 2           see amiraComponent()
//   NUMTIMES    integer          channels of the row
//   CH1         real*4           channel 1, the others follow; required
//
// A column that is absent, and a cell that holds nothing to read, leaves what a keyword has said;
// so a position of another row never reaches a sounding. Line, loop, current, ramp and side of a
// row stay in force for the rows below.

enum AmiraVariable : std::size_t {
    AmiraStation,
    AmiraLineName,
    AmiraLoop,
    AmiraEast,
    AmiraNorth,
    AmiraElevation,
    AmiraTxLength,
    AmiraCurrent,
    AmiraTurnOff,
    AmiraComponent,
    AmiraNumTimes,
    AmiraChannel1,
    AmiraVariables
};

inline constexpr std::array<std::string_view, AmiraVariables> AmiraNames = {
    "STATION",   "LINE",    "LOOP",    "EAST",      "NORTH",    "ELEVATION",
    "XTXLENGTH", "CURRENT", "TURNOFF", "COMPONENT", "NUMTIMES", "CH1"};

inline constexpr int AmiraMaxColumns = 128;
inline constexpr std::size_t AmiraLabelWidth = 32;

/// Room for the longest row: a shorter limit would cut its last value to another number.
inline constexpr std::size_t AmiraLineLimit = 8192;

/// Components of a higher code are no dB/dt.
inline constexpr int AmiraLastCode = 5;

/// Counting pass: finds every survey line and counts its readings into the line table, then takes
/// the coil areas into the preset. Control values end as they began.
/// returns  0; 1 when the file cannot be read or holds no data; 2 for data of another kind
///          (reported); 1 too when the user has stopped the reading
int AMR_Count(SurveyModel &model, const std::string &fileName);

/// Reading pass over the rows of one LineLabel, after STD_Allocate_hTrn. Fills the soundings and
/// their count, and the control values from the keywords in force at the line's last row. Readings
/// of a station are averaged, channel by channel. Starts from the keywords that the count pass
/// started from: what sections of other lines have said must not reach the chosen one.
/// returns  0; 1 when nothing was read (reported) or the user has stopped the reading; 2 without
///          times of channels, or for data of another kind
int AMR_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel);

/// The one walk over a file that both passes make.
struct AmiraWalk {
    LineReader reader{AmiraLineLimit};
    std::string name; ///< of the file, for messages
    AmiraRecord record;
    ColumnMap columns;
    SplitCells cells;
    LineIdentity identity;
    LineNotice rowsAsKeywords;   ///< rows that hold a mark of keywords
    LineNotice commas;           ///< the first row with decimal commas
    bool commasSeparate = false; ///< the labels are separated by commas
    bool quiet = false;          ///< second pass: faults of keywords and lines reported in the
                                 ///< first pass are not repeated
    int stopStatus = 0;          ///< 2 or more when a keyword has stopped the file

    /// Opens the file, sets the defaults and what the survey information file has said.
    /// returns  0, or 1 when it cannot be opened (reported)
    int open(const SurveyModel &model, const std::string &fileName);

    /// Reads on to the first label line.
    /// returns  0; 1 without a usable one (reported) or when the user has stopped the reading; the
    ///          status of a keyword that stops the file
    int readHeader();

    /// Goes to the next row, on the way taking keywords, and splits it.
    /// line         out: left-adjusted
    /// leastLength  shorter lines are skipped
    /// returns      false at the end of the file, and when a keyword has stopped it
    bool nextRow(std::string_view &line, std::size_t leastLength);

    /// Takes line and component of the current row.
    void takeLineAndComponent();

    [[nodiscard]] int number() const { return reader.lineNumber(); }
    /// The cell of a variable, blank without a column.
    [[nodiscard]] std::string_view cell(AmiraVariable variable) const {
        return cells.column(columns.iVarCol[variable]);
    }
    [[nodiscard]] bool hasColumn(AmiraVariable variable) const {
        return columns.iVarCol[variable] > 0;
    }

  private:
    bool takeLabels(std::string_view line, bool reportMissing);
    void takeLine();
};

} // namespace keldrin
