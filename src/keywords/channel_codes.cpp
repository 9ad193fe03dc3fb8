#include "keywords/channel_codes.h"

#include "base/ascii.h"
#include "base/index.h"
#include "text/cell_report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>

namespace keldrin {
namespace {

constexpr int Decoded = 0;
constexpr int NoCode = 1;

constexpr std::string_view GainDigits = "0123456A";
constexpr std::array<float, GainDigits.size()> GainFactors = {1.0F,  2.0F,  4.0F,  8.0F,
                                                              16.0F, 32.0F, 64.0F, 0.125F};

struct BitField {
    unsigned first;
    unsigned count;
};

constexpr std::array<BitField, 7> StatusFields = {
    {{0, 2}, {2, 3}, {5, 1}, {6, 2}, {8, 3}, {11, 1}, {12, 3}}};

/// The 1-based place of a gain digit; 0 for any other character.
int gainDigit(char c) {
    const std::size_t place = GainDigits.find(c);
    return place == std::string_view::npos ? 0 : static_cast<int>(place) + 1;
}

float gainFactor(int digit) {
    return GainFactors[asIndex(digit - 1)];
}

/// The stages before the "-". False at a character that is no gain digit.
bool decodeStages(std::string_view digits, ChannelGain &gain) {
    for (std::size_t i = 0; i < std::min(digits.size(), gain.stages.size()); ++i) {
        gain.stages[i] = gainDigit(digits[i]);
        if (gain.stages[i] == 0) {
            return false;
        }
        gain.factor *= gainFactor(gain.stages[i]);
    }
    return true;
}

/// A divisor of 1 is stored as "no divisor".
bool decodeDivisor(std::string_view digits, ChannelGain &gain) {
    if (digits.empty()) {
        return true;
    }
    const int digit = gainDigit(digits.front());
    if (digit == 0) {
        return false;
    }
    gain.factor /= gainFactor(digit);
    gain.divisor = digit == 1 ? 0 : digit;
    return true;
}

} // namespace

int Ch_Decode_Gain(std::string_view code, ChannelGain &gain) {
    const ChannelGain none;
    gain = none;
    if (isEmptyCell(code)) {
        return NoCode;
    }
    gain.code = Str_Upper(trimLeft(code));
    if (gain.code == none.code) {
        return Decoded;
    }
    const std::string_view text = gain.code.view();
    const std::size_t dash = text.find('-');
    const std::string_view divisor =
        dash == std::string_view::npos ? std::string_view{} : text.substr(dash + 1);
    if (!decodeStages(text.substr(0, dash), gain) || !decodeDivisor(divisor, gain)) {
        gain = none;
        return NoCode;
    }
    return Decoded;
}

int Ch_Decode_Status(std::string_view code, ChannelStatus &status) {
    status = ChannelStatus{};
    const std::string_view text = trimBlanks(code);
    unsigned word = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), word, 16);
    if (text.size() > status.code.Limit || error != std::errc{} ||
        end != text.data() + text.size()) {
        return NoCode;
    }
    status.code = Str_Upper(text);
    for (std::size_t i = 0; i < StatusFields.size(); ++i) {
        const BitField field = StatusFields[i];
        status.fields[i] = static_cast<int>(word >> field.first & ((1U << field.count) - 1U));
    }
    return Decoded;
}

} // namespace keldrin
