#include "messages/reading_place.h"

#include "base/paths.h"
#include "messages/message_sink.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace keldrin {

/// Boxes about rows of files in one command.
struct RowBoxes {
    static constexpr int MostShown = 2;
    int shown = 0;
    std::set<std::pair<std::string, std::size_t>> known; ///< file, and hash of row and message
    int messages = 0;               ///< held back and not shown in a box before
    std::set<int> rows;             ///< that these are about
    std::vector<MessageLine> first; ///< of these
    MessageLine last;
};

namespace {

RowBoxes &rowBoxes() {
    std::shared_ptr<RowBoxes> &boxes = messageLog().rowBoxes;
    if (!boxes) {
        boxes = std::make_shared<RowBoxes>();
    }
    return *boxes;
}

std::size_t hashOf(int row, std::span<const MessageLine> lines) {
    std::string text = std::to_string(row);
    for (const MessageLine &line : lines) {
        text.append("|").append(line.view());
    }
    return std::hash<std::string>{}(text);
}

// The last one is said too where it is of another kind: it may have ended the reading.
std::vector<MessageLine> summaryOf(const RowBoxes &boxes, const std::string &file) {
    constexpr std::size_t mostOfFirst = 2;
    std::vector<MessageLine> lines;
    if (boxes.rows.empty()) {
        return lines;
    }
    const bool one = boxes.rows.size() == 1;
    const std::string place = one ? "line " + std::to_string(*boxes.rows.begin())
                                  : "lines " + std::to_string(*boxes.rows.begin()) + " to " +
                                        std::to_string(*boxes.rows.rbegin());
    lines.emplace_back(std::to_string(boxes.rows.size()) +
                       (one ? " more row of " : " more rows of ") + file +
                       (one ? " has faults, " : " have faults, ") + place + ". The first fault:");
    for (std::size_t i = 0; i < std::min(boxes.first.size(), mostOfFirst); ++i) {
        lines.push_back(boxes.first[i]);
    }
    if (boxes.last.view() != boxes.first.front().view()) {
        lines.emplace_back("The last: " + boxes.last.str());
    }
    lines.emplace_back("F2 lists them all.");
    return lines;
}

} // namespace

ReadingPlace::ReadingPlace(const LineReader &reader, std::string_view path)
    : reader_(reader), file_(fileNameOf(path)) {
    messageLog().readings.push_back(this);
}

ReadingPlace::~ReadingPlace() {
    settle();
    std::erase(messageLog().readings, this);
}

int ReadingPlace::row() const {
    return reader_.ended() ? 0 : reader_.lineNumber();
}

void ReadingPlace::settle() {
    RowBoxes &boxes = rowBoxes();
    const std::vector<MessageLine> lines =
        boxes.messages == 1 ? boxes.first : summaryOf(boxes, file_);
    const bool any = boxes.messages > 0;
    boxes.messages = 0;
    boxes.rows.clear();
    if (any) {
        ShowErrorBox(lines, false);
    }
}

bool holdsRowBox(std::span<const MessageLine> lines) {
    const MessageLog &log = messageLog();
    const int row = log.readings.empty() ? 0 : log.readings.back()->row();
    if (row == 0 || lines.empty() || !messageSink().box) {
        return false;
    }
    RowBoxes &boxes = rowBoxes();
    const bool isNew = boxes.known.emplace(log.readings.back()->file(), hashOf(row, lines)).second;
    if (boxes.shown < RowBoxes::MostShown) {
        ++boxes.shown;
        return false;
    }
    if (isNew) {
        if (boxes.messages++ == 0) {
            boxes.first.assign(lines.begin(), lines.end());
        }
        boxes.last = lines.front();
        boxes.rows.insert(row);
    }
    return true;
}

} // namespace keldrin
