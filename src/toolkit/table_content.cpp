#include "toolkit/table_content.h"

#include "base/index.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <set>

namespace keldrin {

namespace {

bool takeNumber(std::string_view &text, int &number) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return read.ec == std::errc();
}

// "3" or "1-5"
bool takeRun(std::string_view &text, int count, std::set<int> &rows) {
    int first = 0;
    if (!takeNumber(text, first)) {
        return false;
    }
    int last = first;
    if (text.substr(0, 1) == "-") {
        text.remove_prefix(1);
        if (!takeNumber(text, last)) {
            return false;
        }
    }
    if (first < 1 || last < first || last > count) {
        return false;
    }
    for (int row = first; row <= last; ++row) {
        rows.insert(row);
    }
    return true;
}

void addCell(std::string &line, std::string_view cell) {
    for (const char c : cell) {
        line += c == '\t' || c == '\n' ? ' ' : c;
    }
}

template <class Cells, class TextOf>
std::string tabbedLine(const Cells &cells, TextOf textOf) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += i > 0 ? "\t" : "";
        addCell(line, textOf(cells[i]));
    }
    return line + "\n";
}

} // namespace

std::string rowsText(const TableRows &rows) {
    std::string text;
    for (std::size_t i = 0; i < rows.size();) {
        std::size_t last = i;
        while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1) {
            ++last;
        }
        text += (i > 0 ? "," : "") + std::to_string(rows[i]);
        text += last > i ? "-" + std::to_string(rows[last]) : "";
        i = last + 1;
    }
    return text;
}

std::optional<TableRows> rowsNamed(std::string_view text, int count) {
    if (text == "none") {
        return TableRows{};
    }
    if (text == "all") {
        TableRows all(asIndex(count));
        std::iota(all.begin(), all.end(), 1);
        return all;
    }
    std::set<int> rows;
    for (;;) {
        if (!takeRun(text, count, rows)) {
            return std::nullopt;
        }
        if (text.empty()) {
            return TableRows(rows.begin(), rows.end());
        }
        if (text.front() != ',') {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
}

std::string tabbedText(const TableContent &table, const TableRows &rows) {
    const auto ownText = [](const std::string &cell) -> std::string_view {
        return cell;
    };
    std::string text = tabbedLine(
        table.columns, [](const HeadedColumn &column) -> std::string_view { return column.head; });
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        if (rows.empty() || std::binary_search(rows.begin(), rows.end(), static_cast<int>(i) + 1)) {
            text += tabbedLine(table.rows[i], ownText);
        }
    }
    return text;
}

} // namespace keldrin
