#ifndef BRUM_TESTS_SUPPORT_BUILD_KIND_H
#define BRUM_TESTS_SUPPORT_BUILD_KIND_H

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

#if defined(__OPTIMIZE__)
inline constexpr bool is_optimised = true;
#else
inline constexpr bool is_optimised = false;
#endif

/// The number of terms of a large formula: `usual`, a fifth of it where the compiler does not
/// optimise, a tenth where a sanitizer slows each step.
constexpr std::size_t large_size(std::size_t usual) {
  if (under_sanitizer) {
    return usual / 10;
  }
  return is_optimised ? usual : usual / 5;
}

}  // namespace brum::testing

#endif
