#pragma once

#include <string>
#include <string_view>

namespace keldrin {

/// What stands for bytes that are no character.
inline constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Takes the first character off a text of UTF-8. A byte that begins no valid character (including
/// overlong forms and surrogates) is taken alone and gives the replacement character. The text must
/// not be empty.
char32_t takeCharacter(std::string_view &text);

/// The text with the replacement character in place of every byte that is part of no character, so
/// that a reader of UTF-8 accepts it.
std::string validUtf8(std::string_view text);

} // namespace keldrin
