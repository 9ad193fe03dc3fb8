#include "page/surfaces/pdf_bookmarks.h"

#include "base/ascii.h"
#include "base/index.h"
#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace keldrin {

namespace {

using Number = std::size_t;

/// The number after the first `key` of a text; none without one.
std::optional<Number> numberBehind(std::string_view text, std::string_view key) {
    const std::size_t at = text.find(key);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view rest = text.substr(at + key.size());
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\n')) {
        rest.remove_prefix(1);
    }
    Number number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// A PDF by its last cross-reference table.
class PdfFile {
  public:
    explicit PdfFile(std::string_view pdf) : pdf_(pdf) {
        const std::size_t start = pdf.rfind("startxref");
        const std::size_t trailer = pdf.rfind("trailer");
        if (start == std::string_view::npos || trailer == std::string_view::npos ||
            trailer > start) {
            return;
        }
        trailer_ = pdf.substr(trailer, start - trailer);
        table_ = numberBehind(pdf.substr(start), "startxref");
    }

    [[nodiscard]] std::string_view trailer() const { return trailer_; }
    [[nodiscard]] std::optional<Number> table() const { return table_; }

    /// Between "obj" and "endobj"; blank when the table does not lead to the object.
    [[nodiscard]] std::string_view object(std::optional<Number> number) const {
        constexpr std::string_view head = "xref\n0 ";
        constexpr std::size_t entryBytes = 20;
        if (!number || !table_ ||
            pdf_.substr(std::min(*table_, pdf_.size()), head.size()) != head) {
            return {};
        }
        const std::size_t first = pdf_.find('\n', *table_ + head.size()) + 1;
        const std::size_t entry = first + *number * entryBytes;
        const std::string_view bytes = pdf_.substr(std::min(entry, pdf_.size()), entryBytes);
        std::size_t offset = 0;
        std::from_chars(bytes.data(), bytes.data() + bytes.size(), offset);
        const std::string start = std::to_string(*number) + " 0 obj";
        const std::string_view from = pdf_.substr(std::min(offset, pdf_.size()));
        const std::size_t end = from.find("endobj");
        return from.substr(0, start.size()) == start && end != std::string_view::npos
                   ? from.substr(start.size(), end - start.size())
                   : std::string_view();
    }

  private:
    std::string_view pdf_;
    std::string_view trailer_;
    std::optional<Number> table_;
};

/// The objects of the pages, in their order.
std::vector<Number> pageObjects(const PdfFile &file, std::string_view catalog) {
    const std::string_view tree = file.object(numberBehind(catalog, "/Pages"));
    const std::size_t open = tree.find('[', std::min(tree.find("/Kids"), tree.size()));
    std::vector<Number> pages;
    if (open == std::string_view::npos) {
        return pages;
    }
    std::string_view kids = tree.substr(open + 1, tree.find(']', open) - open - 1);
    constexpr std::string_view reference = " 0 R";
    while (const std::optional<Number> number = numberBehind(kids, "")) {
        pages.push_back(*number);
        const std::size_t end = kids.find(reference);
        kids.remove_prefix(end == std::string_view::npos ? kids.size() : end + reference.size());
    }
    return pages;
}

/// A text in 16 bits a character after a mark, as hexadecimal digits.
std::string textString(std::string_view text) {
    std::string digits = "<FEFF";
    const auto append = [&digits](char32_t unit) {
        std::array<char, 8> hex{};
        std::snprintf(hex.data(), hex.size(), "%04X", static_cast<unsigned>(unit));
        digits += hex.data();
    };
    constexpr char32_t firstOfPairs = 0x10000;
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        if (character < firstOfPairs) {
            append(character);
        } else {
            append(0xD800U + ((character - firstOfPairs) >> 10U));
            append(0xDC00U + ((character - firstOfPairs) & 0x3FFU));
        }
    }
    return digits + ">";
}

std::string reference(std::string_view key, Number number) {
    return "\n" + std::string(key) + " " + std::to_string(number) + " 0 R";
}

/// Where a bookmark stands among the others; indices, -1 for none.
struct Links {
    int parent = -1;
    int previous = -1;
    int next = -1;
    int first = -1;
    int last = -1;
    int count = 0; ///< of those below it
};

std::vector<Links> linksOf(std::span<const PdfBookmark> bookmarks) {
    std::vector<Links> links(bookmarks.size());
    int outer = -1; // the last of level 0
    for (int i = 0; i < static_cast<int>(bookmarks.size()); ++i) {
        Links &own = links[asIndex(i)];
        const bool below = bookmarks[asIndex(i)].level > 0 && outer >= 0;
        if (below) {
            Links &parent = links[asIndex(outer)];
            own.parent = outer;
            own.previous = parent.last;
            parent.first = parent.first < 0 ? i : parent.first;
            parent.last = i;
            ++parent.count;
        } else {
            own.previous = outer;
            outer = i;
        }
        if (own.previous >= 0) {
            links[asIndex(own.previous)].next = i;
        }
    }
    return links;
}

/// Objects in the making, and where they begin.
class Update {
  public:
    explicit Update(std::size_t begin) : begin_(begin) {}

    void add(Number number, std::string_view dictionary) {
        entries_.push_back({number, begin_ + text_.size()});
        text_ += std::to_string(number) + " 0 obj\n<<" + std::string(dictionary) + "\n>>\nendobj\n";
    }

    /// The objects, their cross-reference table and the trailer.
    std::string close(std::string_view trailer) {
        const std::size_t table = begin_ + text_.size();
        text_ += "xref\n";
        for (const Entry &entry : entries_) {
            std::array<char, 48> line{};
            std::snprintf(line.data(), line.size(), "%zu 1\n%010zu 00000 n \n", entry.number,
                          entry.offset);
            text_ += line.data();
        }
        text_.append(trailer).append("startxref\n");
        return text_ + std::to_string(table) + "\n%%EOF\n";
    }

  private:
    struct Entry {
        Number number;
        std::size_t offset;
    };
    std::size_t begin_;
    std::string text_;
    std::vector<Entry> entries_;
};

// What stands between the outermost brackets of a dictionary.
std::string_view dictionaryOf(std::string_view object) {
    const std::size_t open = object.find("<<");
    const std::size_t close = object.rfind(">>");
    return open == std::string_view::npos || close == std::string_view::npos || close < open
               ? std::string_view()
               : object.substr(open + 2, close - open - 2);
}

std::string trailerOf(std::string_view old, Number size, Number previousTable) {
    std::string text(trimBlanks(dictionaryOf(old)));
    const std::size_t at = text.find("/Size");
    const std::size_t end = text.find_first_not_of("0123456789", at + 6);
    text.replace(at, std::min(end, text.size()) - at, "/Size " + std::to_string(size));
    return "trailer\n<<" + text + "/Prev " + std::to_string(previousTable) + "\n>>\n";
}

std::string itemOf(const PdfBookmark &bookmark, const Links &links, Number root, Number page) {
    const auto object = [root](int index) {
        return root + 1 + static_cast<Number>(index);
    };
    std::string item = "\n/Title " + textString(bookmark.text);
    item += reference("/Parent", links.parent < 0 ? root : object(links.parent));
    for (const auto &[key, index] : {std::pair{"/Prev", links.previous},
                                     {"/Next", links.next},
                                     {"/First", links.first},
                                     {"/Last", links.last}}) {
        item += index < 0 ? "" : reference(key, object(index));
    }
    if (links.count > 0) {
        item += "\n/Count -" + std::to_string(links.count); // folded away
    }
    return item + "\n/Dest [" + std::to_string(page) + " 0 R /Fit]";
}

} // namespace

std::string pdfBookmarks(std::string_view pdf, std::span<const PdfBookmark> bookmarks) {
    const PdfFile file(pdf);
    const std::optional<Number> size = numberBehind(file.trailer(), "/Size");
    const std::optional<Number> root = numberBehind(file.trailer(), "/Root");
    const std::string_view catalog = dictionaryOf(file.object(root));
    const std::vector<Number> pages = pageObjects(file, catalog);
    if (bookmarks.empty() || !size || catalog.empty() || pages.empty()) {
        return "";
    }
    const std::vector<Links> links = linksOf(bookmarks);
    Update update(pdf.size());
    std::string outlines = "\n/Type /Outlines" + reference("/First", *size + 1);
    Number outermost = 0;
    Number last = 0;
    for (std::size_t i = 0; i < bookmarks.size(); ++i) {
        outermost += links[i].parent < 0 ? 1 : 0;
        last = links[i].parent < 0 ? i : last;
    }
    outlines += reference("/Last", *size + 1 + last) + "\n/Count " + std::to_string(outermost);
    update.add(*root, "\n/Outlines " + std::to_string(*size) + " 0 R\n/PageMode /UseOutlines" +
                          std::string(catalog));
    update.add(*size, outlines);
    for (std::size_t i = 0; i < bookmarks.size(); ++i) {
        const Number page = pages[std::min(bookmarks[i].page, pages.size() - 1)];
        update.add(*size + 1 + i, itemOf(bookmarks[i], links[i], *size, page));
    }
    return update.close(trailerOf(file.trailer(), *size + 1 + bookmarks.size(), *file.table()));
}

} // namespace keldrin
