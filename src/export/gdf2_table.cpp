#include "export/export_fields.h"
#include "export/export_formats.h"

#include "base/number_text.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace keldrin {

namespace {

constexpr std::string_view CommentRecord = "DEFN   ST=RECD,RT=COMM;RT:A4;COMMENTS:A76\n";

/// A field as the rows hold it.
struct Column {
    const ExportField *field = nullptr;
    std::size_t count = 1; ///< of the array; 1 for a single value
    std::size_t width = 0;
    std::string descriptor; ///< of reals
};

// Fortran's E reads what ES writes, which keeps one digit more.
std::string descriptorOf(std::string_view format) {
    return (format.front() == 'E' ? "(ES" : "(F") + std::string(format.substr(1)) + ")";
}

std::vector<Column> columnsOf(const ExportedLine &line) {
    std::vector<Column> columns;
    for (const ExportField &field : exportFields()) {
        const std::size_t count = field.of == FieldOf::Window  ? line.mostWindows
                                  : field.of == FieldOf::Layer ? line.mostLayers
                                                               : 1;
        if (!field.gdf2.empty() && count > 0) {
            columns.push_back(
                {&field, count, columnWidth(field.format), descriptorOf(field.format)});
        }
    }
    return columns;
}

// A name of a unit in an attribute holds no blanks.
std::string attributeUnit(std::string_view unit) {
    std::string text(unit);
    std::replace(text.begin(), text.end(), ' ', '.');
    return text;
}

std::string definitionOf(const Column &column, const ControlValues &control) {
    const ExportField &field = *column.field;
    std::string text(field.gdf2);
    text += ':';
    text.append(column.count > 1 ? std::to_string(column.count) : "").append(field.format);
    text += ':';
    if (const std::string_view unit = unitText(field, control); !unit.empty()) {
        text.append("UNIT=").append(attributeUnit(unit)).append(",");
    }
    if (!field.null.empty()) {
        text.append("NULL=").append(field.null).append(",");
    }
    return text.append("NAME=").append(field.words);
}

std::string recordStart(std::size_t number) {
    return "DEFN " + std::to_string(number) + " ST=RECD,RT=;";
}

/// Appends a value to a row. Its null stands for one that is missing, or that would leave no blank
/// before it.
class AppendValue {
  public:
    AppendValue(std::string &out, const Column &column) : out_(out), column_(column) {}

    void operator()(std::monostate /*none*/) const { append(column_.field->null); }
    void operator()(std::string_view /*text*/) const { append(column_.field->null); }
    void operator()(int value) const {
        const std::string text = std::to_string(value);
        append(text.size() < column_.width ? text : column_.field->null);
    }
    void operator()(float value) const { appendReal(value); }
    void operator()(double value) const { appendReal(value); }

  private:
    template <class Real>
    void appendReal(Real value) const {
        const std::string text = isPresent(value) ? formatReal(column_.descriptor, value) : "";
        append(text.substr(0, 1) == " " ? text : column_.field->null);
    }
    void append(std::string_view text) const {
        out_.append(column_.width - std::min(text.size(), column_.width), ' ').append(text);
    }

    std::string &out_;
    const Column &column_;
};

std::string definition(const std::vector<Column> &columns, const ControlValues &control) {
    std::string text(CommentRecord);
    std::size_t number = 0;
    for (const Column &column : columns) {
        text.append(recordStart(++number)).append(definitionOf(column, control)).append("\n");
    }
    return text.append(recordStart(++number)).append("END DEFN\n");
}

} // namespace

Gdf2Files gdf2Files(const ExportedLine &line) {
    const std::vector<Column> columns = columnsOf(line);
    Gdf2Files files{definition(columns, *line.control), {}};
    for (const ExportedSounding &sounding : line.soundings) {
        for (const Column &column : columns) {
            const std::size_t own = valueCount(*column.field, sounding);
            const AppendValue append(files.data, column);
            for (std::size_t i = 0; i < column.count; ++i) {
                std::visit(append, i < own ? column.field->get(sounding, i) : ExportValue());
            }
        }
        files.data += '\n';
    }
    return files;
}

std::string gdf2Beginning() {
    const auto fields = exportFields();
    const auto first = std::find_if(fields.begin(), fields.end(),
                                    [](const ExportField &field) { return !field.gdf2.empty(); });
    return std::string(CommentRecord) + recordStart(1) + definitionOf({&*first, 1, 0, {}}, {});
}

} // namespace keldrin
