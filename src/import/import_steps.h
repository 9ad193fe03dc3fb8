#pragma once

#include "base/fixed_text.h"
#include "base/line_reader.h"
#include "model/survey_model.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

namespace keldrin {

// Steps that the readers of field data share.

/// Result of a search in a list of texts that may grow.
struct ListPlace {
    int index = 0; ///< 0-based
    FindOrAdd result = FindOrAdd::Found;
};

/// Finds a line's label in the table or appends it. A full table gives its last row the new label.
ListPlace List_Find_Or_Add(LineTable &lines, std::string_view label);

/// The text of the Select Line list: the name in capitals without blanks, a blank, and the first
/// four characters of the array's text, cut to 16.
FixedText<16> lineLabel(std::string_view lineName, std::string_view arrayText);

/// Finds when a section of a file belongs to another line than the one before. A new record's texts
/// are equal to no name, so the first section always counts as a change.
struct LineIdentity {
    FixedText<16> LastLineName = "!@&#%^$*()";
    FixedText<4> LastArrayText = "$%*&";

    /// Takes the identity that is in force now; true when it differs from the last one.
    bool take(std::string_view lineName, std::string_view arrayText);
    /// The same with the line and array of the keyword records.
    bool take(const Metadata &metadata);
    [[nodiscard]] FixedText<16> label() const {
        return lineLabel(LastLineName.view(), LastArrayText.view());
    }
};

/// The row of the table for the line in force now, added if it is new, with its name and array.
LineEntry &currentLineEntry(LineTable &lines, const LineIdentity &identity, int arrayIndex);
/// The same with the array of the keyword records; on adding, one warning when that is not one of
/// the four that can be inverted.
LineEntry &currentLineEntry(LineTable &lines, const LineIdentity &identity,
                            const Metadata &metadata);

/// Resets the table before a count pass.
void resetLines(LineTable &lines);

/// Station rescaling and coil areas that are in force now.
LineScaling scalingFromMetadata(const Metadata &metadata);

/// Array index, station rescaling and coil areas of the keyword records into the preset.
void presetFromMetadata(SurveyModel &model);

/// The four-way survey array of an import; LOT and CNT count as Coincident-Loop.
int heldArrayIndex(int arrayIndex);

// What the columns of a project hold: beyond it a number stands there as asterisks, and its row is
// lost when the project is read again.

/// A station of the line: a size of at most 999999999.
bool isHoldableStation(double station);
/// A time or a width, msec: 0, or from 1.0E-9 to 9.999E9.
bool isHoldableTime(float time);

/// Counts the distinct soundings of every line during a count pass. Keys are compared to the bit;
/// soundings that differ by rounding only are counted twice, which makes room for one too many.
class SoundingCounter {
  public:
    /// entry  of `lines`; its Soundings rise when the sounding was not seen on this line before
    void count(const LineTable &lines, LineEntry &entry, double tx, double rx, float freq);

  private:
    struct Key {
        int line = -1;
        double tx = MissingValue;
        double rx = MissingValue;
        float freq = MissingValue;
        bool operator==(const Key &) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key &key) const;
    };

    std::unordered_set<Key, KeyHash> seen_;
    Key last_;
};

/// Records that the table must hold for a line.
int soundingsNeeded(const LineEntry &entry);

/// Puts the transmitters of a Moving-Loop line whose file gives no loop where the receiver offset
/// of their rows says: TxStn = RxStn - offset / StnScale, for the soundings of
/// ImportPreset::TxByOffset, whose TxStn is still RxStn - offset. Called once the station file has
/// settled StnScale.
void settleTxByOffset(SurveyModel &model);

/// hTrn_Find_Or_Add for importers: a table that is full is left as it was.
FindOrAdd findOrAddKeepingLast(SurveyModel &model, double TxStn, float TxFreq, double RxStn,
                               int &index);

/// Something that the user must know of many lines of a file, reported once for all of them.
struct LineNotice {
    int count = 0;
    int firstRecord = 0;
    std::string firstLine;

    void note(int record, std::string_view line);
    /// One warning: what the lines are, how many, the first of them in `file`, and what becomes of
    /// them. Nothing without a line.
    void report(std::string_view file, std::string_view what, std::string_view consequence) const;
};

/// What a LineNotice is reported with.
struct NoticeWords {
    std::string_view what;
    std::string_view consequence;
};

/// The survey lines of a file that share a row of the line table, or find none.
class LineNotices {
  public:
    /// Notes the line that a section belongs to.
    /// label     of the line table
    /// fullName  of the line, not cut; with `array` it distinguishes lines
    void note(std::string_view label, std::string_view fullName, std::string_view array,
              int record);
    /// One warning for lines beyond the 32nd, one for lines whose names agree as far as they are
    /// kept.
    void report(std::string_view file) const;

  private:
    std::map<std::string, std::string> nameOfLabel_;
    std::set<std::string> shared_; ///< names that were noted
    LineNotice beyond_;
    LineNotice merged_;
};

/// What a file gives of the settings that have defaults.
struct GivenSettings {
    bool loop = false;
    bool frequency = false;
    bool coilArea = false;
    bool array = false;
    bool centre = false; ///< of the loop; only Fixed-Loop lines need it
};

/// What keyword records have set, or the user, of the settings of an import.
GivenSettings givenSettings(const SurveyModel &model);

/// One warning for each setting that the file does not give and whose default was taken.
void warnOfDefaults(std::string_view file, const GivenSettings &given, const SurveyModel &model);

/// Settles the transmitter loop after the control values were taken from the keyword records: where
/// four vertices (Tx.XYZ1 to 4) are given, they give centre, sides and azimuth as far as no record
/// of their own does.
/// given  loop and centre become true with the vertices
void settleLoopFromVertices(SurveyModel &model, GivenSettings &given);

/// What must be reported at the end of a file of field data: an end mark with data after it (a box
/// that is always shown), a last line that may be cut, a line that was too long.
void noteFileEnd(const LineReader &reader, std::string_view file);

/// Reports data rows that seem to have commas for decimal points.
void noteDecimalCommas(const LineNotice &commas, std::string_view file);

/// The words that end a count pass: "Found N lines and M TEM transients."
std::string foundText(int lines, int transients);

/// Ends a count pass: logs what was found, or reports that nothing was.
/// reader   name of the pass, for the message
/// returns  0, or 1 without a line or a transient
int finishCount(const LineTable &lines, int transients, std::string_view reader);

} // namespace keldrin
