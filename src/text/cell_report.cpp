#include "text/cell_report.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "messages/message_log.h"

#include <string>

namespace keldrin {

bool isEmptyCell(std::string_view cell) {
    bool blank = true;
    for (const char c : cell) {
        if (c == '*') {
            return true;
        }
        blank = blank && (c == ' ' || c == '\t');
    }
    return blank;
}

void reportCell(const RecordLine &record, std::string_view cell, std::string_view label,
                const CellWords &words) {
    if (record.quiet) {
        return;
    }
    const std::string_view quote = words.quoted ? "\"" : "";
    std::string what(words.first);
    what.append(trimBlanks(label)).append(words.after);
    what.append(quote).append(trimRight(cell)).append(quote);
    ReportError({what, "Record number " + std::to_string(record.number), trimBlanks(record.line)});
}

} // namespace keldrin
