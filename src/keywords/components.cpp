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
        const Components behind = components.subspan(i);
        const std::string label = labelOf(reading, i, components.size());
        if (skipped(record.tokens[i]) || std::none_of(behind.begin(), behind.end(), isOpen) ||
            !takeValue(reading, cell, record.tokens[i], label, last)) {
            continue;
        }
        for (SourcedReal *component : behind) {
            if (isOpen(component)) {
                component->value = last;
                component->level = record.level;
            }
        }
        stored = true;
    }
    return stored;
}

bool isLengthUnit(std::string_view token) {
    return sameIgnoringCase(token, "m") || sameIgnoringCase(token, "f") ||
           sameIgnoringCase(token, "ft");
}

} // namespace keldrin
