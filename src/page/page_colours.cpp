#include "page/page_colours.h"

#include "base/ascii.h"

#include <array>

namespace keldrin {

namespace {

struct NamedColour {
    std::string_view name;
    PageColour colour;
};

constexpr std::array<NamedColour, 5> NamedColours = {{{"BLACK", Colour::Black},
                                                      {"RED", Colour::Red},
                                                      {"BLUE", Colour::Blue},
                                                      {"GREY", Colour::Grey},
                                                      {"WHITE", Colour::White}}};

} // namespace

std::optional<PageColour> colourOfName(std::string_view name) {
    for (const NamedColour &named : NamedColours) {
        if (sameIgnoringCase(named.name, name)) {
            return named.colour;
        }
    }
    return std::nullopt;
}

std::string nameOfColour(PageColour colour) {
    for (const NamedColour &named : NamedColours) {
        if (named.colour == colour) {
            return std::string(named.name);
        }
    }
    return colourCodeText(colour);
}

std::string colourCodeText(PageColour colour) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string code = "#";
    for (unsigned shift = 24; shift > 0; shift -= 4) {
        code += digits[(colour >> (shift - 4)) & 0xFU];
    }
    return code;
}

} // namespace keldrin
