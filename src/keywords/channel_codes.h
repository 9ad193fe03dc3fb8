#pragma once

#include "model/metadata_instruments.h"

#include <string_view>

namespace keldrin {

// The codes in which receivers write the settings of a channel.
//
// returns  0, or 1 for a text that is blank, holds a "*" or is no such code; the result is then the
//          one of no code

/// A gain code such as "356-2", at most 8 characters in any case: up to three amplifier stages and
/// after the "-" a divisor, all of them digits of "0123456A" for 1, 2, 4, 8, 16, 32, 64 and 0.125.
/// A fourth stage and what follows the divisor do not count. "NONE" is a gain of 1.
int Ch_Decode_Gain(std::string_view code, ChannelGain &gain);

/// A status word of at most four hexadecimal digits: bits 0-1, 2-4, 5, 6-7, 8-10, 11 and 12-14.
int Ch_Decode_Status(std::string_view code, ChannelStatus &status);

} // namespace keldrin
