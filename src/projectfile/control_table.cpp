#include "projectfile/control_table.h"

#include "base/ascii.h"
#include "base/free_form.h"

namespace keldrin {

namespace {

template <class T>
constexpr bool isNumber = std::is_arithmetic_v<std::remove_reference_t<T>>;

template <class T>
struct FieldOf;
template <class Owner, class T>
struct FieldOf<T Owner::*> {
    using Type = T;
};

template <class T>
constexpr int lengthOf = 0;
template <class T, std::size_t N>
constexpr int lengthOf<std::array<T, N>> = static_cast<int>(N);

} // namespace

const ControlRow *findControlRow(std::string_view name) {
    const auto row = std::find_if(ControlTable.begin(), ControlTable.end(), [&](const auto &each) {
        return sameIgnoringCase(each.name, name);
    });
    return row == ControlTable.end() ? nullptr : &*row;
}

int arrayLength(const ControlRow &row) {
    return std::visit(
        [](auto member) { return lengthOf<typename FieldOf<decltype(member)>::Type>; }, row.field);
}

int elementCount(const ControlRow &row) {
    return std::max(1, arrayLength(row));
}

bool holdsText(const ControlRow &row) {
    return std::visit(
        [](auto member) {
            using Field = typename FieldOf<decltype(member)>::Type;
            if constexpr (isArrayField<Field>) {
                return !isNumber<typename Field::value_type>;
            } else {
                return !isNumber<Field>;
            }
        },
        row.field);
}

bool storeText(ControlGroup &group, const ControlRow &row, int element, std::string_view text) {
    return visitControlElement(group, row, element, [&](auto &value) {
        if constexpr (isNumber<decltype(value)>) {
            return false;
        } else {
            value = text;
            return true;
        }
    });
}

bool storeNumber(ControlGroup &group, const ControlRow &row, int element, std::string_view token) {
    return visitControlElement(group, row, element, [&](auto &value) {
        if constexpr (isNumber<decltype(value)>) {
            return readFreeForm(token, value) == FreeForm::Value;
        } else {
            return false;
        }
    });
}

void forceRange(ControlGroup &group, const ControlRow &row) {
    const ForcedRange &range = row.range;
    if (range.low > range.high) {
        return;
    }
    visitControl(group, row, [&](auto &value) {
        using T = std::remove_reference_t<decltype(value)>;
        if constexpr (isNumber<T>) {
            if (!range.onlyIfSet || isPresent(static_cast<double>(value))) {
                value = limited(value, static_cast<T>(range.low), static_cast<T>(range.high));
            }
        }
    });
}

} // namespace keldrin
