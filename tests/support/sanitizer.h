#pragma once

namespace keldrin {

// Under AddressSanitizer an allocation that cannot be had and a crash end the process.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool UnderSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr bool UnderSanitizer = true;
#else
inline constexpr bool UnderSanitizer = false;
#endif
#else
inline constexpr bool UnderSanitizer = false;
#endif

} // namespace keldrin
