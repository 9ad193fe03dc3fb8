#include "page/surfaces/page_transcript.h"

#include "base/real.h"
#include "page/page_colours.h"
#include "page/surfaces/coordinate_text.h"

#include <cstddef>

namespace keldrin {

namespace {

constexpr int TranscriptDecimals = 2;

void appendPoints(std::string &line, const RecordedItem &item) {
    for (const PagePoint &point : item.points) {
        line += ' ';
        appendCoordinate(line, point.x, TranscriptDecimals);
        line += ' ';
        appendCoordinate(line, point.y, TranscriptDecimals);
    }
}

void appendQuoted(std::string &line, std::string_view text) {
    line += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            line += '\\';
        }
        line += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    line += '"';
}

std::string textLine(const RecordedItem &item) {
    std::string line = "text";
    appendPoints(line, item);
    line += ' ';
    appendCoordinate(line, item.characterHeight, TranscriptDecimals);
    line += ' ' + std::to_string(nearestInt(item.degrees));
    line += ' ' + nameOfColour(item.colour) + ' ';
    appendQuoted(line, item.text);
    return line;
}

std::string pathLine(std::string_view word, const RecordedItem &item) {
    std::string line(word);
    line += ' ' + nameOfColour(item.colour) + ' ' + std::to_string(item.points.size());
    appendPoints(line, item);
    return line;
}

std::string markerLine(const RecordedItem &item) {
    std::string line = item.marker == PlusMarker   ? "mark plus "
                       : item.marker == RingMarker ? "mark ring "
                                                   : "mark dot ";
    line += nameOfColour(item.colour);
    appendPoints(line, item);
    return line;
}

std::string transcriptLine(const RecordedItem &item) {
    switch (item.kind) {
    case RecordedItem::Kind::Text:
        return textLine(item);
    case RecordedItem::Kind::Line:
        return pathLine("line", item);
    case RecordedItem::Kind::Polygon:
        return pathLine("poly", item);
    case RecordedItem::Kind::Area:
        return pathLine("area", item);
    case RecordedItem::Kind::Marker:
        break;
    }
    return markerLine(item);
}

struct PageCounts {
    std::size_t texts = 0;
    std::size_t lines = 0;
    std::size_t points = 0;
    std::size_t pluses = 0;
    std::size_t dots = 0;
    std::size_t red = 0;
    std::size_t blue = 0;
    std::size_t black = 0;
    std::size_t areas = 0;
};

void countMarker(PageCounts &counts, const RecordedItem &item) {
    (item.marker == PlusMarker ? counts.pluses : counts.dots) += 1;
    counts.red += item.colour == Colour::Red ? 1 : 0;
    counts.blue += item.colour == Colour::Blue ? 1 : 0;
    counts.black += item.colour == Colour::Black ? 1 : 0;
}

PageCounts countsOf(const RecordSurface &page) {
    PageCounts counts;
    for (const RecordedItem &item : page.items()) {
        if (item.kind == RecordedItem::Kind::Text) {
            ++counts.texts;
        } else if (item.kind == RecordedItem::Kind::Marker) {
            countMarker(counts, item);
        } else if (item.kind == RecordedItem::Kind::Area) {
            ++counts.areas;
        } else {
            ++counts.lines;
            counts.points += item.points.size();
        }
    }
    return counts;
}

} // namespace

std::vector<std::string> pageTranscript(const RecordSurface &page) {
    std::vector<std::string> lines;
    lines.reserve(page.items().size());
    for (const RecordedItem &item : page.items()) {
        lines.push_back(transcriptLine(item));
    }
    return lines;
}

std::string pageSummary(const RecordSurface &page) {
    const PageCounts counts = countsOf(page);
    std::string line = page.kind();
    const auto add = [&line](std::string_view name, std::size_t count) {
        line.append(name).append(std::to_string(count));
    };
    add(" texts=", counts.texts);
    add(" lines=", counts.lines);
    add(" points=", counts.points);
    add(" markers plus=", counts.pluses);
    add(" dot=", counts.dots);
    add(" red=", counts.red);
    add(" blue=", counts.blue);
    add(" black=", counts.black);
    if (counts.areas > 0) {
        add(" areas=", counts.areas);
    }
    return line;
}

} // namespace keldrin
