#include "keywords/components.h"

#include "base/ascii.h"

namespace keldrin {

bool takeComponents(const Reading &reading, CellReader<float> cell, Components components,
                    bool (*skipped)(std::string_view token), float &last) {
    const KeywordRecord &record = reading.record;
    const auto isOpen = [&](const SourcedReal *component) {
        return record.level >= component->level;
    };
    bool stored = false;
    for (std::size_t i = 0; i < std::min(record.tokens.size(), components.size()); ++i) {
        const Components rest = components.subspan(i);
        const std::string label = labelOf(reading, i, components.size());
        if (skipped(record.tokens[i]) || std::none_of(rest.begin(), rest.end(), isOpen) ||
            !takeValue(reading, cell, record.tokens[i], label, last)) {
            continue;
        }
        for (SourcedReal *component : rest) {
            if (isOpen(component)) {
                component->value = last;
                component->level = record.level;
            }
        }
        stored = true;
    }
    return stored;
}

bool takeSides(const Reading &reading, std::array<SourcedLength *, 2> sides) {
    float last = 0.0F;
    if (!takeComponents(reading, lengthCell, std::array<SourcedReal *, 2>{sides[0], sides[1]},
                        isLengthUnit, last)) {
        return false;
    }
    for (SourcedLength *side : sides) {
        if (side->level == reading.record.level) {
            side->unitAssumed = assumesLengthUnit(reading);
        }
    }
    const auto &tokens = reading.record.tokens;
    if (std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(
                                         std::min<std::size_t>(sides.size(), tokens.size())),
                    tokens.end(), [](std::string_view token) {
                        return !token.empty() && !isLengthUnit(token);
                    })) {
        notePartlyUsed(reading, "has more values than are used");
    }
    return true;
}

bool isLengthUnit(std::string_view token) {
    return lengthUnitNamed(token) != 0;
}

} // namespace keldrin
