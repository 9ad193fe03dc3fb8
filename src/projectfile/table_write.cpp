#include "projectfile/table_file.h"

#include "base/real.h"
#include "base/safe_writer.h"

#include <type_traits>

namespace keldrin {

namespace {

template <class T>
constexpr bool isElementField =
    std::is_same_v<std::remove_cvref_t<T>, WindowReals SoundingRecord::*> ||
    std::is_same_v<std::remove_cvref_t<T>, LayerReals SoundingRecord::*>;

bool isEmptyCell(const TableColumn &column, double value) {
    switch (column.empty) {
    case EmptyCell::Never:
        return false;
    case EmptyCell::IfMissing:
        return !isPresent(value);
    case EmptyCell::UnlessAboveZero:
        return !(value > 0.0);
    }
    return false;
}

void appendCell(std::string &out, const TableColumn &column, double value) {
    if (isEmptyCell(column, value)) {
        return;
    }
    switch (column.type) {
    case CellType::R8:
        appendNumberText(out, value, column.edit);
        break;
    case CellType::R4:
        appendNumberText(out, static_cast<float>(value), column.edit);
        break;
    case CellType::Int:
        appendIntText(out, nearestInt(value));
        break;
    }
}

} // namespace

void appendLabelLine(std::string &out, std::span<const TableColumn> columns) {
    std::string_view separator;
    for (const TableColumn &column : columns) {
        out.append(separator).append(column.written);
        separator = ",";
    }
    out += LineEnd;
}

void appendTableRow(std::string &out, std::span<const TableColumn> columns,
                    const RowValues &values) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i > 0) {
            out += ',';
        }
        appendCell(out, columns[i], values[i]);
    }
    out += LineEnd;
}

void loadSoundingFields(std::span<const TableColumn> columns, const SoundingRecord &record,
                        RowValues &values) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (const auto *field = std::get_if<double SoundingRecord::*>(&columns[i].field)) {
            values[i] = record.**field;
        }
    }
}

void loadElementFields(std::span<const TableColumn> columns, const SoundingRecord &record,
                       std::size_t element, RowValues &values) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::visit(
            [&](const auto &field) {
                using Field = decltype(field);
                if constexpr (isElementField<Field>) {
                    values[i] = static_cast<double>((record.*field)[element]);
                } else if constexpr (std::is_same_v<Field, const WeightAxis &>) {
                    values[i] = static_cast<double>(record.TEMwgt[element][field.axis]);
                }
            },
            columns[i].field);
    }
}

void storeSoundingFields(std::span<const TableColumn> columns, const RowValues &values,
                         SoundingRecord &record) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (const auto *field = std::get_if<double SoundingRecord::*>(&columns[i].field)) {
            record.**field = values[i];
        }
    }
}

void storeElementFields(std::span<const TableColumn> columns, const RowValues &values,
                        std::size_t element, SoundingRecord &record) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::visit(
            [&](const auto &field) {
                using Field = decltype(field);
                if constexpr (isElementField<Field>) {
                    (record.*field)[element] = static_cast<float>(values[i]);
                } else if constexpr (std::is_same_v<Field, const WeightAxis &>) {
                    record.TEMwgt[element][field.axis] = static_cast<float>(values[i]);
                }
            },
            columns[i].field);
    }
}

bool isLeftOut(const ControlValues &control, const SoundingRecord &record) {
    return control.SurveyTypeIndex == FixedLoop && !sameFileStation(record.TxStn, control.TxStn);
}

} // namespace keldrin
