#pragma once

#include <string_view>

namespace keldrin {

/// The canonical form of an upper-case key such as "TXFRQ" or "RX.LABID", looked up once: a
/// canonical form that is itself an old key stays as it is. A key without an alias is its own
/// canonical form. One old key has a blank form, which disables it.
std::string_view canonicalKey(std::string_view key);

} // namespace keldrin
