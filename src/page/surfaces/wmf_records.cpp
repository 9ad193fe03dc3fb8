#include "page/surfaces/wmf_records.h"

#include "base/real.h"
#include "base/utf8.h"

#include <algorithm>
#include <array>

namespace keldrin {

namespace {

constexpr std::size_t RecordHeadWords = 3;
constexpr std::size_t HeaderWords = 9;

void appendWord(std::string &out, std::uint16_t word) {
    out += static_cast<char>(word & 0xFFU);
    out += static_cast<char>(word >> 8U);
}

void appendLong(std::string &out, std::size_t value) {
    appendWord(out, static_cast<std::uint16_t>(value & 0xFFFFU));
    appendWord(out, static_cast<std::uint16_t>(value >> 16U & 0xFFFFU));
}

void appendRecord(std::string &out, WmfFunction function, std::span<const std::uint16_t> words) {
    appendLong(out, RecordHeadWords + words.size());
    appendWord(out, static_cast<std::uint16_t>(function));
    for (const std::uint16_t word : words) {
        appendWord(out, word);
    }
}

std::string placeableHeader(const WmfPage &page) {
    const std::array<std::uint16_t, 10> words = {0xCDD7, // these two words mark such a file
                                                 0x9AC6,
                                                 0,
                                                 0, // left and top of the page
                                                 0,
                                                 wmfWord(page.width),
                                                 wmfWord(page.height),
                                                 wmfWord(page.unitsPerInch),
                                                 0,
                                                 0};
    std::string header;
    std::uint16_t checksum = 0;
    for (const std::uint16_t word : words) {
        appendWord(header, word);
        checksum = static_cast<std::uint16_t>(checksum ^ word);
    }
    appendWord(header, checksum);
    return header;
}

// The characters 0x80 to 0x9F of Windows-1252; 0 where it has none.
constexpr std::array<char32_t, 32> From80 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char windows1252(char32_t character) {
    if (character < 0x7F || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto *found = std::find(From80.begin(), From80.end(), character);
    return found == From80.end() ? '?' : static_cast<char>(0x80 + (found - From80.begin()));
}

bool isControl(char32_t character) {
    return character < ' ' || (character >= 0x7F && character < 0xA0);
}

} // namespace

std::uint16_t wmfWord(int value) {
    constexpr int lowest = -32768;
    constexpr int highest = 32767;
    return static_cast<std::uint16_t>(limited(value, lowest, highest));
}

void appendBytes(std::vector<std::uint16_t> &words, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : '\0';
        words.push_back(static_cast<std::uint16_t>(low | static_cast<unsigned>(high) << 8U));
    }
}

std::string windows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        if (!isControl(character)) {
            bytes += windows1252(character);
        }
    }
    return bytes;
}

void WmfRecords::clear() {
    bytes_.clear();
    largest_ = 0;
}

void WmfRecords::add(WmfFunction function, std::initializer_list<int> words) {
    std::vector<std::uint16_t> held;
    held.reserve(words.size());
    for (const int word : words) {
        held.push_back(static_cast<std::uint16_t>(word));
    }
    add(function, held);
}

void WmfRecords::add(WmfFunction function, std::span<const std::uint16_t> words) {
    appendRecord(bytes_, function, words);
    largest_ = std::max(largest_, RecordHeadWords + words.size());
}

std::string WmfRecords::file(const WmfPage &page, std::size_t objects) const {
    constexpr std::uint16_t metafileType = 1;
    constexpr std::uint16_t version = 0x0300;
    std::string records = bytes_;
    appendRecord(records, WmfFunction::End, {});
    std::string bytes = placeableHeader(page);
    appendWord(bytes, metafileType);
    appendWord(bytes, HeaderWords);
    appendWord(bytes, version);
    appendLong(bytes, HeaderWords + records.size() / 2);
    appendWord(bytes, static_cast<std::uint16_t>(objects));
    appendLong(bytes, std::max(largest_, RecordHeadWords));
    appendWord(bytes, 0);
    return bytes + records;
}

} // namespace keldrin
