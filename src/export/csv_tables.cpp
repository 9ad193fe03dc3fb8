#include "export/export_fields.h"
#include "export/export_formats.h"

#include "base/utf8.h"

#include <array>
#include <charconv>
#include <cmath>

namespace keldrin {

namespace {

/// Texts in quotes where they hold what separates cells; quotes inside are doubled.
void appendText(std::string &out, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += validUtf8(text);
        return;
    }
    out += '"';
    for (const char c : validUtf8(text)) {
        out.append(c == '"' ? 2 : 1, c);
    }
    out += '"';
}

/// The shortest text that gives the same number again, with an exponent only for what is very
/// small or large.
template <class Real>
void appendReal(std::string &out, Real value) {
    constexpr Real least = Real(1.0E-5);
    constexpr Real most = Real(1.0E15);
    if (!isPresent(value) || !std::isfinite(value)) {
        return;
    }
    const Real size = std::fabs(value);
    const bool fixed = size >= least && size < most;
    std::array<char, 64> text{};
    const auto format = fixed ? std::chars_format::fixed : std::chars_format::scientific;
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value, format);
    out.append(size == Real(0) ? "0" : std::string_view(text.data(), end));
}

struct AppendCell {
    std::string &out;

    void operator()(std::monostate /*none*/) const {}
    void operator()(int value) const { out += std::to_string(value); }
    void operator()(float value) const { appendReal(out, value); }
    void operator()(double value) const { appendReal(out, value); }
    void operator()(std::string_view text) const { appendText(out, text); }
};

/// One of the three tables: keys of the sounding, then keys and values of what it has a row for.
class CsvTable {
  public:
    CsvTable(FieldOf rows, const ControlValues &control) {
        for (const bool keys : {true, false}) {
            for (const ExportField &field : exportFields()) {
                const bool belongs = field.of == rows || (keys && field.of == FieldOf::Sounding);
                if (!field.csv.empty() && field.key == keys && belongs) {
                    fields_.push_back(&field);
                    appendHead(field, control);
                }
            }
        }
        text_ += '\n';
    }

    void append(const ExportedSounding &sounding) {
        const std::size_t count = valueCount(*fields_.back(), sounding);
        for (std::size_t element = 0; element < count; ++element) {
            std::string_view separator;
            for (const ExportField *field : fields_) {
                text_ += separator;
                std::visit(AppendCell{text_}, field->get(sounding, element));
                separator = ",";
            }
            text_ += '\n';
        }
    }

    std::string take() { return std::move(text_); }

  private:
    void appendHead(const ExportField &field, const ControlValues &control) {
        text_.append(text_.empty() ? "" : ",").append(field.csv);
        if (const std::string_view unit = unitText(field, control); !unit.empty()) {
            text_.append(" [").append(unit).append("]");
        }
    }

    std::vector<const ExportField *> fields_;
    std::string text_;
};

std::string tableOf(FieldOf rows, const ExportedLine &line) {
    CsvTable table(rows, *line.control);
    for (const ExportedSounding &sounding : line.soundings) {
        table.append(sounding);
    }
    return table.take();
}

} // namespace

CsvTables csvTables(const ExportedLine &line) {
    return {tableOf(FieldOf::Sounding, line), tableOf(FieldOf::Window, line),
            tableOf(FieldOf::Layer, line)};
}

} // namespace keldrin
