#include "toolkit/scripted/transcript.h"

#include "base/fixed_text.h"
#include "toolkit/menu.h"
#include "toolkit/scripted/script_words.h"

#include <algorithm>
#include <array>
#include <utility>

namespace keldrin {

namespace {

// In the order of ControlKind.
constexpr std::array<std::string_view, 11> KindNames = {"static", "text",  "integer", "real",
                                                        "double", "check", "list",    "trackbar",
                                                        "button", "grid",  "bar"};

char onOneLine(char c) {
    return static_cast<unsigned char>(c) < 0x20U ? ' ' : c;
}

} // namespace

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += onOneLine(c);
    }
    return result + '"';
}

std::string fileRequestText(const FileRequest &request) {
    return std::string(request.save ? "file save " : "file open ") + inQuotes(request.title) + " " +
           inQuotes(request.filter) + " from " + inQuotes(trimRight(request.path));
}

std::string boxRequestText(const BoxRequest &request) {
    std::string lines;
    for (std::size_t i = 0; i < request.lines.size(); ++i) {
        lines.append(i == 0 ? "" : "|").append(request.lines[i]);
    }
    return "box " + inQuotes(request.title) + " " + inQuotes(lines);
}

std::string runRequestText(const std::vector<std::string> &command) {
    std::string text = "run";
    for (const std::string &word : command) {
        text.append(" ").append(inQuotes(word));
    }
    return text;
}

std::string fieldLine(const ControlState &control) {
    const auto kind = static_cast<std::size_t>(control.kind);
    return "field " + std::to_string(control.id) + " " + std::string(KindNames[kind]) +
           (control.enabled ? " on " : " off ") + inQuotes(control.label) + " = " +
           inQuotes(shownValue(control));
}

std::vector<std::string> tableLines(const ControlState &control) {
    std::vector<std::string> lines;
    if (control.kind != ControlKind::Grid) {
        return lines;
    }
    const std::string id = std::to_string(control.id);
    lines.push_back("head " + id);
    for (const HeadedColumn &column : control.table.columns) {
        lines.back() += " " + inQuotes(column.head);
    }
    for (const std::vector<std::string> &row : control.table.rows) {
        lines.push_back("row " + id + " " + std::to_string(lines.size()));
        for (const std::string &cell : row) {
            lines.back() += " " + inQuotes(cell);
        }
    }
    return lines;
}

std::vector<std::string> dialogLines(const DialogModel &dialog) {
    const std::string_view mode = dialog.mode == DialogModal ? " modal " : " modeless ";
    std::vector<std::string> lines = {"dialog open " + std::to_string(dialog.number) +
                                      std::string(mode) + inQuotes(dialog.caption)};
    for (const ControlState &control : dialog.controls) {
        lines.push_back(fieldLine(control));
        for (std::string &line : tableLines(control)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

void Transcript::print(std::string_view line) {
    out_ << line << '\n' << std::flush;
}

void Transcript::fact(std::string_view text) {
    std::string line(trimRight(text));
    std::transform(line.begin(), line.end(), line.begin(), onOneLine);
    print(line);
    recent_.push_back(std::move(line));
}

void Transcript::echo(int number, std::string_view line) {
    print("> " + std::to_string(number) + ": " + std::string(line));
}

void Transcript::complain(int number, std::string_view text) {
    print("! " + std::to_string(number) + ": " + std::string(text));
}

void Transcript::listed(std::string_view line) {
    const std::string whole = "| " + std::string(line);
    print(whole);
    recent_.push_back(whole);
}

bool Transcript::anyMatches(std::string_view pattern) const {
    return std::any_of(recent_.begin(), recent_.end(),
                       [&](const std::string &line) { return matchesPattern(line, pattern); });
}

} // namespace keldrin
