#pragma once

#include "base/file_operations.h"
#include "model/survey_model.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

// Skip marks that a review has changed and the project file does not hold yet, one line for each,
// in a file beside the project: NAME.marks. A write of the project removes it, so what is found
// when a project is opened was lost by a run that ended too early.
//
//   KELDRIN skip marks of NAME.std, not yet saved: date,RxStn,TxStn,TWcenter,skipped
//   22/11/2026 00:41:07,1150,1150,0.0243,1
//   22/11/2026 00:41:09,DataCutoff,12.5
//
// The second form of line is for the project's error threshold, which Auto Skip changes with marks.
// Stations and times are written as in the project file, so they name the same window when that is
// read again. Of several lines about one window the last counts.

/// The journal of a project; blank for a path that is no project.
std::string markJournalPath(std::string_view projectPath);

/// A journal that is being written. The file is made by the first mark.
struct MarkJournal {
    std::string path = {}; ///< blank: nothing is written
    OpenFile file = {};
};

/// A window of a line.
struct LineWindow {
    int station = 0;        ///< ordinal of the sounding, from 1
    std::size_t window = 0; ///< from 0
};

/// Appends the marks of some windows as they now are, and DataCutoff if it is given, and flushes
/// them to the disk all at once. When that fails the log says so once, and nothing more is written:
/// a failing journal never ends a review.
/// cutoff  percent
void appendMarks(MarkJournal &journal, const SurveyModel &model,
                 std::span<const LineWindow> windows, std::optional<float> cutoff = {});

/// The bytes of a journal on the disk, for cutMarkJournal(); nothing when there is none.
std::optional<std::uintmax_t> markJournalLength(const MarkJournal &journal);

/// Makes a journal what it was at an earlier length, or removes one that was not there then.
/// returns  false when the system refuses; the journal is as it was
[[nodiscard]] bool cutMarkJournal(MarkJournal &journal, std::optional<std::uintmax_t> length);

/// Closes and removes the journal, for marks that are saved or given up.
void dropMarkJournal(MarkJournal &journal);

/// What a journal holds, by the texts that name the windows.
struct UnsavedMarks {
    std::string date = {}; ///< of the last line, "DD/MM/YYYY hh:mm:ss"
    std::map<std::string, bool> skipped = {};
    std::optional<float> cutoff = {}; ///< percent
};

/// Reads a journal. A last line without its end was cut by the end of its run and is skipped, as is
/// what is no mark.
/// returns  false when there is none, or it cannot be read, which is reported
[[nodiscard]] bool readMarkJournal(const std::string &path, UnsavedMarks &marks);

/// What the marks are to a model.
struct UnsavedCount {
    int changes = 0; ///< windows that they would change, and DataCutoff
    int unknown = 0; ///< marks of windows that the model does not hold
};
UnsavedCount countUnsavedMarks(const SurveyModel &model, const UnsavedMarks &marks);

/// Sets the marks in the model. Windows that it does not hold are ignored.
void takeUnsavedMarks(SurveyModel &model, const UnsavedMarks &marks);

} // namespace keldrin
