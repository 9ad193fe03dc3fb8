#pragma once

#include "import/amira/file.h"
#include "import/window_tables.h"

#include <array>
#include <string_view>

namespace keldrin {

// Rows of the read pass of an AMIRA file.

/// Why the user must know of rows.
enum AmiraNotice : std::size_t {
    AmiraUnusedComponent,
    AmiraOtherCount,
    AmiraUnreadCells,
    AmiraNoTime,
    AmiraImpossible,
    AmiraImpossibleWidth,
    AmiraNoLoop,
    AmiraNotices
};

/// A read pass under way.
struct AmiraReadPass {
    AmiraWalk walk;
    WindowTables tables;
    std::array<LineNotice, AmiraNotices> notices;
    AmiraRecord chosen;        ///< in force at the last row of the chosen line
    bool inChosenLine = false; ///< the last row was one of it
    bool full = false;         ///< no room for another sounding
    bool noCurrentTold = false;

    void note(AmiraNotice notice, std::string_view line) {
        notices[notice].note(walk.number(), line);
    }
};

/// Reads the current row of the walk into its sounding, if it is one of the chosen line.
void AMR_Read_Row(AmiraReadPass &pass, SurveyModel &model, std::string_view lineLabel,
                  std::string_view line);

} // namespace keldrin
