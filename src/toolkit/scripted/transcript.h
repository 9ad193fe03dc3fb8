#pragma once

#include "toolkit/backend.h"
#include "toolkit/dialog_model.h"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// `text` between quotes, with \" and \\ inside and control characters shown as blanks.
std::string inQuotes(std::string_view text);

// The words of requests, as transcripts and messages show them.
std::string fileRequestText(const FileRequest &request);
std::string boxRequestText(const BoxRequest &request);
std::string runRequestText(const std::vector<std::string> &command);

/// "field ID KIND on|off "LABEL" = "TEXT""
std::string fieldLine(const ControlState &control);

/// Of a table "head ID "HEAD" ..." and for each row "row ID N "CELL" ..."; nothing of others.
std::vector<std::string> tableLines(const ControlState &control);

/// "dialog open N modal|modeless "CAPTION"", then the lines of each control.
std::vector<std::string> dialogLines(const DialogModel &dialog);

/// What a user would have seen, a fact a line. Every line goes out at once.
class Transcript {
  public:
    explicit Transcript(std::ostream &out) : out_(out) {}

    /// A fact. Trailing blanks are dropped, so that a pattern can match the whole of it.
    void fact(std::string_view text);
    void echo(int number, std::string_view line);     ///< "> N: LINE"
    void complain(int number, std::string_view text); ///< "! N: TEXT"
    void listed(std::string_view line);               ///< "| LINE", a line of a shown file

    /// Forgets the facts that a check looks at: those since the last event or answer.
    void startAnew() { recent_.clear(); }
    [[nodiscard]] bool anyMatches(std::string_view pattern) const;

  private:
    void print(std::string_view line);

    std::ostream &out_;
    std::vector<std::string> recent_;
};

} // namespace keldrin
