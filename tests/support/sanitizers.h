#ifndef BRUM_TESTS_SUPPORT_SANITIZERS_H
#define BRUM_TESTS_SUPPORT_SANITIZERS_H

#include <cstddef>

namespace brum::testing {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool under_sanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer) || \
    __has_feature(thread_sanitizer)
inline constexpr bool under_sanitizer = true;
#else
inline constexpr bool under_sanitizer = false;
#endif
#else
inline constexpr bool under_sanitizer = false;
#endif

/// The number of terms of a large formula: `usual`, a tenth of it where a sanitizer slows each
/// step.
constexpr std::size_t large_size(std::size_t usual) {
  return under_sanitizer ? usual / 10 : usual;
}

}  // namespace brum::testing

#endif
