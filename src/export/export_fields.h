#pragma once

#include "export/exported_line.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace keldrin {

// The fields of exported tables. One table of them drives CSV and ASEG-GDF2.

/// A field has one value for each sounding, or one for each of its windows or layers.
enum class FieldOf : unsigned char { Sounding, Window, Layer };

/// Nothing where there is no value. What is not finite counts as none, and so does MissingValue.
using ExportValue = std::variant<std::monostate, int, float, double, std::string_view>;

struct ExportField {
    FieldOf of;
    bool key;                ///< stands first in each CSV table, so that they can be joined
    std::string_view csv;    ///< its name there; blank: it is not part of it
    std::string_view gdf2;   ///< its name there; blank: it is not part of it
    std::string_view unit;   ///< a unit, LengthUnit or StationUnit; blank: none
    std::string_view format; ///< a column of ASEG-GDF2 as in Fortran: "I6", "F12.3", "E12.4"
    std::string_view null;   ///< what stands in the column for no value; blank: there always is one
    std::string_view words;  ///< what it is
    ExportValue (*get)(const ExportedSounding &sounding, std::size_t element);
};

// Units that depend on the project.
inline constexpr std::string_view LengthUnit = "(length)";
inline constexpr std::string_view StationUnit = "(station)"; ///< a length where StnScale is 1

/// The width of a column from its format.
constexpr std::size_t columnWidth(std::string_view format) {
    std::size_t width = 0;
    for (std::size_t i = 1; i < format.size() && format[i] != '.'; ++i) {
        width = 10 * width + static_cast<std::size_t>(format[i] - '0');
    }
    return width;
}

/// All fields, in the order of the columns of ASEG-GDF2.
std::span<const ExportField> exportFields();

/// The unit of a field as it is written for a project; blank without one.
std::string_view unitText(const ExportField &field, const ControlValues &control);

/// How many values of a field a sounding has.
std::size_t valueCount(const ExportField &field, const ExportedSounding &sounding);

} // namespace keldrin
