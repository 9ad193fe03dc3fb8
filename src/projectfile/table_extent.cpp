#include "projectfile/table_extent.h"

#include "base/line_reader.h"
#include "base/paths.h"
#include "projectfile/control_group.h"
#include "projectfile/table_file.h"

#include <fstream>

namespace keldrin {

namespace {

int countRows(LineReader &reader) {
    int rows = 0;
    std::string_view line;
    while (reader.next(line) == LineStatus::Line) {
        rows += classifyTableLine(line) == TableLine::Data ? 1 : 0;
    }
    return rows;
}

bool endsInLineEnd(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(-1, std::ios::end);
    return file.get() == '\n';
}

} // namespace

TableExtent projectExtent(const std::string &path) {
    LineReader reader(MostGroupLine);
    ControlValues control;
    ControlGroup group{control, {}};
    std::string faultyLine;
    if (!isRegularFile(path) || !reader.open(path) ||
        readControlGroup(reader, group, faultyLine) != GroupStatus::Read) {
        return {};
    }
    return {countRows(reader), endsInLineEnd(path)};
}

TableExtent modelExtent(const std::string &path) {
    LineReader reader(MostTableLine);
    if (!isRegularFile(path) || !reader.open(path)) {
        return {};
    }
    return {countRows(reader), endsInLineEnd(path)};
}

bool isTorn(const TableExtent &now, const TableExtent &before) {
    return before.rows > 0 && (now.rows == 0 || (before.endsInLineEnd && !now.endsInLineEnd));
}

} // namespace keldrin
