#include "import/amira/record.h"

#include "base/ascii.h"
#include "base/free_form.h"

#include <cmath>
#include <string>

namespace keldrin {

namespace {

constexpr std::array<std::string_view, 4> ArrayNames = {"FXL", "MVL", "INL", "COL"};
constexpr std::string_view ComponentLetters = "XYZICAUV";
constexpr double LargestNumber = 1.0E9;

} // namespace

int amiraArrayIndex(std::string_view config) {
    const char first = config.empty() ? ' ' : config.front();
    if (first == 'F' || holds(config, "HOLE") || config == "LTX_SRX" || config == "LTX_DHR") {
        return FixedLoop;
    }
    if (first == 'S' || config == "INOUT" || config == "MVL") {
        return MovingLoop;
    }
    if (first == 'I' || config == "LTX_ILR") {
        return InLoop;
    }
    return first == 'C' ? CoincidentLoop : MovingLoop;
}

std::string_view amiraArrayName(int arrayIndex) {
    return nameOf(ArrayNames, arrayIndex);
}

int amiraComponent(std::string_view text) {
    const std::string upper = Str_Upper(trimLeft(text).substr(0, 2));
    const std::size_t letter = ComponentLetters.find_first_of(upper);
    return letter == std::string_view::npos ? 0 : static_cast<int>(letter) + 1;
}

int Cell_to_AmiraNumber(std::string_view cell, double &value) {
    const std::size_t first = cell.find_first_of("-0123456789");
    const std::size_t last = cell.find_last_of("0123456789");
    if (last == std::string_view::npos) {
        return CellEmpty;
    }
    const std::string_view number = cell.substr(first, last - first + 1);
    double read = 0.0;
    if (readFreeForm(number, read) != FreeForm::Value || std::fabs(read) > LargestNumber) {
        return CellFailed;
    }
    const std::string suffix = Str_Upper(trimLeft(cell.substr(last + 1)).substr(0, 1));
    value = suffix == "W" || suffix == "S" ? -read : read;
    return CellRead;
}

void reportAt(const RecordLine &where, std::initializer_list<MessageLine> lines) {
    if (!where.quiet) {
        ReportError(lines);
    }
}

void warnAt(const RecordLine &where, std::initializer_list<MessageLine> lines) {
    if (!where.quiet) {
        ReportWarning(lines);
    }
}

int AMR_Number(const RecordLine &where, std::string_view cell, double &value) {
    const int status = Cell_to_AmiraNumber(cell, value);
    if (status > CellRead) {
        reportAt(where, {"WARNING: Could not read number from " + std::string(cell),
                         "Record # " + std::to_string(where.number)});
    }
    return status;
}

} // namespace keldrin
