#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace keldrin {

/// Text without its trailing blanks.
constexpr std::string_view trimRight(std::string_view text) {
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

/// The longest head of `text` of at most `limit` bytes that does not end inside a UTF-8 character.
constexpr std::string_view cutText(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return text.substr(0, end);
}

/// Text of at most N bytes, as the survey's records and files hold it.
///
/// The limit is in the type: assignment cuts at the start of a UTF-8 character. Trailing blanks
/// carry no meaning and are not kept, so comparison ignores them; blank means "not set".
template <std::size_t N>
class FixedText {
  public:
    static constexpr std::size_t Limit = N;

    constexpr FixedText() = default;
    constexpr FixedText(std::string_view text) { assign(text); } // NOLINT: converts on purpose
    constexpr FixedText(const char *text) { assign(std::string_view(text)); } // NOLINT
    FixedText(const std::string &text) { assign(text); }                      // NOLINT

    [[nodiscard]] constexpr std::string_view view() const { return {bytes_.data(), length_}; }
    [[nodiscard]] constexpr bool isBlank() const { return length_ == 0; }
    [[nodiscard]] std::string str() const { return std::string(view()); }

    template <std::size_t M>
    constexpr bool operator==(const FixedText<M> &other) const {
        return view() == other.view();
    }
    constexpr bool operator==(std::string_view other) const { return view() == trimRight(other); }

  private:
    constexpr void assign(std::string_view text) {
        const std::string_view kept = trimRight(cutText(text, N));
        for (std::size_t i = 0; i < kept.size(); ++i) {
            bytes_[i] = kept[i];
        }
        length_ = static_cast<std::uint16_t>(kept.size());
    }

    static_assert(N <= 65535);
    std::array<char, N> bytes_{};
    std::uint16_t length_ = 0;
};

} // namespace keldrin
