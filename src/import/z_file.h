#pragma once

#include "base/line_reader.h"
#include "import/import_steps.h"
#include "model/survey_model.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace keldrin {

// Report files of one survey line (*.z): free text, a line that marks the start of a table in fixed
// columns, and an end line. Lines of at most 128 bytes, tested without regard to case.
//
//   head  every line up to and including one with "IIX" in columns 1 to 3; one of them holds
//         "MAGNITUDE" or "DBZ/DT", the mark of the right data
//   end   a line with "9999.0" anywhere in columns 1 to 10, in the head too; or the end of the file
//
//   columns  field      read as  use
//    1-2     code       integer  2 marks a reading; lines of any other code are skipped
//    3-10    station    real*8   file station number
//   11-18    time       real*4   window centre, msec
//   19-30    magnitude  real*4   uV/A
//
// Blanks do not count, an empty field is 0 and exponents are E or D, so a blank line has code 0.
// The readings of a sounding follow one another; a station that comes back opens another sounding.

inline constexpr std::size_t ZLineLimit = 128;
inline constexpr int ZReadingCode = 2;

/// One line of the table.
struct ZReading {
    int code = 0;
    double station = 0.0;
    float time = 0.0F;          ///< msec
    float magnitude = 0.0F;     ///< uV/A
    bool hasEmptyField = false; ///< station or magnitude; the field counts as 0
};

/// The one walk over a file that both passes make.
struct ZWalk {
    LineReader reader{ZLineLimit};
    std::string name;         ///< of the file, for messages
    bool ended = false;       ///< an end line was met
    int linesOfOtherCode = 0; ///< skipped so far, blank ones apart
    LineNotice commas;        ///< lines that cannot be read for their decimal commas

    /// False when the file cannot be opened (reported).
    bool open(const std::string &fileName);

    /// Logs the head and goes to the table. False when there is none, which is not reported, or
    /// when the head lacks the mark of the right data (reported).
    bool scanHead();

    /// Goes to the next reading of code 2. A line that cannot be read is skipped and reported;
    /// those with decimal commas are noted.
    /// line     as it stands in the file
    /// returns  false at the end line or the end of the file
    bool nextReading(ZReading &reading, std::string_view &line);
};

/// Reads the four fields of a line. False when one of them holds anything but a number.
bool readZFields(std::string_view line, ZReading &reading);

/// Counting pass: one line, named by the survey information file, with its transients.
/// returns  0, or 1 when the file holds no reading or cannot be read (reported) or the user has
///          stopped the reading
int Z_Count(SurveyModel &model, const std::string &fileName);

/// Reading pass, after STD_Allocate_hTrn. Every sounding gets its Station, rescaled, and its
/// windows: TWcenter, TEMobs in nV/(A m2), TEMerr 1 percent, TEMwgtZ. East, North, Elevation and
/// the keys are missing, for later steps to fill; all else stays as allocated. Takes coil area and
/// station rescaling from the preset.
///
/// lineLabel  not used: a file holds one line
/// returns    0, or 1 when nothing was read (reported) or the user has stopped the reading
int Z_Read(SurveyModel &model, const std::string &fileName, std::string_view lineLabel);

} // namespace keldrin
