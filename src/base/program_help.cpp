#include "base/program_help.h"

#include "base/man_page.h"
#include "base/manual.h"
#include "base/version.h"
#include "base/word_wrap.h"

#include <algorithm>
#include <cstdio>

namespace keldrin {

namespace {

constexpr std::size_t PageWidth = 80;
constexpr std::size_t TermIndent = 2;
constexpr std::size_t UsageIndent = 6;
constexpr std::size_t LongestTerm = 26; ///< that has its text on the same line

void appendWrapped(std::string &out, std::string_view text, std::size_t indent) {
    for (const std::string_view line : wrapText(text, PageWidth - indent)) {
        out.append(indent, ' ').append(line).append("\n");
    }
}

void appendUsage(std::string &out, const HelpEntry &entry) {
    constexpr std::size_t nextIndent = UsageIndent + TermIndent;
    std::size_t indent = TermIndent;
    for (const std::string_view line : wrapText(entry.term, PageWidth - nextIndent)) {
        out.append(indent, ' ').append(line).append("\n");
        indent = nextIndent;
    }
    appendWrapped(out, entry.text, UsageIndent);
}

// The text begins in `column`, on the line of its term when that is short enough.
void appendEntry(std::string &out, const HelpEntry &entry, std::size_t column) {
    std::string text;
    appendWrapped(text, entry.text, column);
    const std::string term = std::string(TermIndent, ' ').append(entry.term);
    if (!text.empty() && term.size() + TermIndent <= column) {
        out.append(term).append(text.substr(term.size()));
    } else {
        out.append(term).append("\n").append(text);
    }
}

void appendSection(std::string &out, const HelpSection &section) {
    std::size_t longest = 0;
    for (const HelpEntry &entry : section.entries) {
        longest = std::max(longest, entry.term.size() <= LongestTerm ? entry.term.size() : 0);
    }
    out.append("\n").append(section.title).append(":\n");
    for (const HelpEntry &entry : section.entries) {
        appendEntry(out, entry, TermIndent + longest + TermIndent);
    }
}

std::string versionText(const ProgramHelp &help) {
    return std::string(help.name)
        .append(" ")
        .append(ReleaseText)
        .append(" ")
        .append(ReleaseDate)
        .append("\n");
}

std::optional<int> answerWord(const ProgramHelp &help, std::string_view word) {
    if (word == "--help" || word == "-h") {
        return printText(helpText(help));
    }
    if (word == "--help=man") {
        return printText(manPage(help));
    }
    constexpr std::string_view topic = "--help=";
    if (word.substr(0, topic.size()) == topic) {
        return printManual(help.name, word.substr(topic.size()));
    }
    if (word == "--version") {
        return printText(versionText(help));
    }
    return std::nullopt;
}

} // namespace

std::string helpText(const ProgramHelp &help) {
    std::string out = std::string(help.name).append(": ").append(help.purpose).append("\n");
    if (!help.description.empty()) {
        out.append("\n");
        appendWrapped(out, help.description, 0);
    }
    out.append("\nusage:\n");
    for (const HelpEntry &entry : help.usage) {
        appendUsage(out, entry);
    }
    for (const HelpSection &section : help.sections) {
        appendSection(out, section);
    }
    return out;
}

int printText(std::string_view text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return std::fflush(stdout) == 0 && written ? 0 : 1;
}

std::optional<int> answerHelp(const ProgramHelp &help, std::span<const std::string_view> words) {
    for (const std::string_view word : words) {
        if (word == "--") {
            break;
        }
        if (const std::optional<int> code = answerWord(help, word)) {
            return code;
        }
    }
    return std::nullopt;
}

} // namespace keldrin
