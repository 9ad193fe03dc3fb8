#pragma once

#include "base/file_operations.h"
#include "model/survey_model.h"

#include <cstddef>
#include <map>
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
//
// Stations and times are written as in the project file, so they name the same window when that is
// read again. Of several lines about one window the last counts.

/// The journal of a project; blank for a path that is no project.
std::string markJournalPath(std::string_view projectPath);

/// A journal that is being written. The file is made by the first mark.
struct MarkJournal {
    std::string path = {}; ///< blank: nothing is written
    OpenFile file = {};
};

/// Appends the marks of some windows as they now are and flushes them to the disk. When that fails
/// the log says so once, and nothing more is written: a review never ends for want of a journal.
/// windows  from 0
void appendMarks(MarkJournal &journal, const SoundingRecord &sounding,
                 std::span<const std::size_t> windows);

/// Closes and removes the journal, for marks that are saved or given up.
void dropMarkJournal(MarkJournal &journal);

/// What a journal holds, by the texts that name the windows.
struct UnsavedMarks {
    std::string date = {}; ///< of the last line, "DD/MM/YYYY hh:mm:ss"
    std::map<std::string, bool> skipped = {};
};

/// Reads a journal. A last line without its end was cut by the end of its run and is passed over,
/// as is what is no mark.
/// returns  false when there is none, or it cannot be read, which is reported
[[nodiscard]] bool readMarkJournal(const std::string &path, UnsavedMarks &marks);

/// What the marks are to a model.
struct UnsavedCount {
    int changes = 0; ///< windows that they would change
    int unknown = 0; ///< marks of windows that the model does not hold
};
UnsavedCount countUnsavedMarks(const SurveyModel &model, const UnsavedMarks &marks);

/// Sets the marks in the model. Windows that it does not hold are passed over.
void takeUnsavedMarks(SurveyModel &model, const UnsavedMarks &marks);

} // namespace keldrin
