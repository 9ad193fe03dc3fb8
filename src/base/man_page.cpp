#include "base/man_page.h"

#include "base/ascii.h"
#include "base/fixed_text.h"
#include "base/version.h"
#include "base/word_wrap.h"

#include <algorithm>

namespace keldrin {

namespace {

constexpr std::size_t SourceWidth = 72; ///< lines of the source, before the escapes

enum class Font { Roman, Bold, Italic };

bool isWordCharacter(char c) {
    return (upperOf(c) >= 'A' && upperOf(c) <= 'Z') || isDigit(c) || c == '_' || c == '-';
}

std::size_t pageWordLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && isWordCharacter(text[length])) {
        ++length;
    }
    return length;
}

// A hyphen as typed is "\-": a plain one may be set as another character, or end a line.
std::string escaped(std::string_view text, bool typed) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') {
            out.append("\\e");
        } else if (c == '"') {
            out.append("\\(dq");
        } else if (c == '-' && typed) {
            out.append("\\-");
        } else {
            out.push_back(c);
        }
    }
    return out;
}

std::string inFont(Font font, std::string_view word, bool typed) {
    const std::string text = escaped(word, typed);
    return font == Font::Bold     ? "\\fB" + text + "\\fR"
           : font == Font::Italic ? "\\fI" + text + "\\fR"
                                  : text;
}

/// What sets the words of one program's help.
class Setter {
  public:
    explicit Setter(const ProgramHelp &help) : help_(help) {}

    /// The line of a form of use or a term: what is typed as it stands is bold.
    [[nodiscard]] std::string term(std::string_view text) const { return set(text, true); }

    /// The lines of running text.
    [[nodiscard]] std::string paragraph(std::string_view text) const {
        std::string out;
        while (!text.empty()) {
            const std::size_t stop = text.find(". ");
            const std::string_view sentence = text.substr(0, stop == text.npos ? stop : stop + 1);
            for (const std::string_view line : wrapText(sentence, SourceWidth)) {
                out.append(set(line, false));
            }
            text.remove_prefix(sentence.size());
        }
        return out;
    }

  private:
    [[nodiscard]] Font fontOf(std::string_view word, bool isTerm) const {
        const auto &placeholders = help_.placeholders;
        if (std::find(placeholders.begin(), placeholders.end(), word) != placeholders.end()) {
            return Font::Italic;
        }
        return isTerm || word.substr(0, 2) == "--" ? Font::Bold : Font::Roman;
    }

    // A line that begins with no control character.
    [[nodiscard]] std::string set(std::string_view text, bool isTerm) const {
        std::string out = text.front() == '.' || text.front() == '\'' ? "\\&" : "";
        while (!text.empty()) {
            const std::string_view word = text.substr(0, pageWordLength(text));
            if (word.empty()) {
                out.append(escaped(text.substr(0, 1), false));
                text.remove_prefix(1);
            } else {
                const Font font = fontOf(word, isTerm);
                out.append(inFont(font, word, font != Font::Roman || isDigit(word.front())));
                text.remove_prefix(word.size());
            }
        }
        return out + "\n";
    }

    const ProgramHelp &help_;
};

std::string heading(std::string_view title) {
    return ".SH \"" + escaped(Str_Upper(title), true) + "\"\n";
}

std::string titleLine(const ProgramHelp &help) {
    return ".TH " + escaped(Str_Upper(help.name), true) + " 1 \"" + std::string(ReleaseDate) +
           "\" \"" + std::string(trimRight(ProgramName)) + " " + std::string(ReleaseText) +
           "\" \"User Commands\"\n";
}

std::string entries(const Setter &setter, std::span<const HelpEntry> list) {
    std::string out;
    for (const HelpEntry &entry : list) {
        if (!entry.text.empty()) {
            out.append(".TP\n").append(setter.term(entry.term));
            out.append(setter.paragraph(entry.text));
        }
    }
    return out;
}

std::string synopsis(const Setter &setter, const ProgramHelp &help) {
    std::string out;
    for (const HelpEntry &entry : help.usage) {
        out.append(out.empty() ? "" : ".br\n").append(setter.term(entry.term));
    }
    return out;
}

std::string seeAlso(const ProgramHelp &help) {
    std::string out;
    for (const std::string_view &name : help.seeAlso) {
        const bool last = &name == &help.seeAlso.back();
        out.append(".BR ").append(escaped(name, true)).append(last ? " (1)\n" : " (1),\n");
    }
    return out;
}

} // namespace

std::string manPage(const ProgramHelp &help) {
    const Setter setter(help);
    std::string out = titleLine(help);
    // The formatters keep words whole and lines ragged, so that options can be searched for.
    out.append(".nh\n.ad l\n");
    out.append(heading("name")).append(escaped(help.name, true)).append(" \\- ");
    out.append(escaped(help.purpose, false)).append("\n");
    out.append(heading("synopsis")).append(synopsis(setter, help));
    out.append(heading("description")).append(setter.paragraph(help.description));
    out.append(entries(setter, help.usage));
    for (const HelpSection &section : help.sections) {
        out.append(heading(section.title)).append(entries(setter, section.entries));
    }
    if (!help.seeAlso.empty()) {
        out.append(heading("see also")).append(seeAlso(help));
    }
    return out;
}

} // namespace keldrin
