#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The records of a Windows metafile, as published: 16-bit words, low byte first. A record is its
// size in words (32 bits), a function and the function's arguments, the last one first.

enum class WmfFunction : std::uint16_t {
    End = 0x0000,
    SetBkMode = 0x0102,
    SetMapMode = 0x0103,
    SelectObject = 0x012D,
    SetTextAlign = 0x012E,
    SetTextColor = 0x0209,
    SetWindowOrg = 0x020B,
    SetWindowExt = 0x020C,
    LineTo = 0x0213,
    MoveTo = 0x0214,
    CreatePenIndirect = 0x02FA,
    CreateFontIndirect = 0x02FB,
    CreateBrushIndirect = 0x02FC,
    Polygon = 0x0324,
    Rectangle = 0x041B,
    TextOut = 0x0521,
};

/// A page of a metafile, in its own units.
struct WmfPage {
    int width = 0;
    int height = 0;
    int unitsPerInch = 0; ///< below 1440
};

/// Collects records, and puts the two headers before them.
class WmfRecords {
  public:
    void clear();
    void add(WmfFunction function, std::initializer_list<int> words);
    void add(WmfFunction function, std::span<const std::uint16_t> words);

    /// The whole file: placeable header, header, the records and the end record.
    [[nodiscard]] std::string file(const WmfPage &page, std::size_t objects) const;

  private:
    std::string bytes_;
    std::size_t largest_ = 0; ///< words of the largest record
};

/// A value as one word; out of its range, the nearest end.
std::uint16_t wmfWord(int value);

/// Bytes as words, with a zero after an odd count.
void appendBytes(std::vector<std::uint16_t> &words, std::string_view bytes);

/// A text in Windows-1252 with "?" for characters that it has not; control characters are dropped.
std::string windows1252(std::string_view text);

} // namespace keldrin
