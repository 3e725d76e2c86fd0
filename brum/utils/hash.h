#ifndef BRUM_UTILS_HASH_H
#define BRUM_UTILS_HASH_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace brum {

class Term;
class Symbol;
class DataType;

namespace hsh {

__extension__ using uint128 = unsigned __int128;

/**
 * Factors for mixing: primes, so that no multiple of a divisor stands out, with about half of their
 * bits set.
 */
inline constexpr std::uint64_t first_mixer = 0xbb67ae8584caa6b9U;
inline constexpr std::uint64_t second_mixer = 0xc2b2ae3d27d4eb4fU;

/** Folds the 128-bit product of two words into one word, each bit of which depends on many of both.
 */
constexpr std::uint64_t mix(std::uint64_t a, std::uint64_t b) noexcept {
  const uint128 product = static_cast<uint128>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

/** Hash of `text`, byte for byte; about one multiplication for 8 bytes. The same on every run. */
inline std::uint64_t hash_bytes(std::string_view text) noexcept {
  std::uint64_t result = text.size() * second_mixer;
  const char* bytes = text.data();
  std::size_t left = text.size();
  for (; left >= sizeof(std::uint64_t);
       left -= sizeof(std::uint64_t), bytes += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    result = mix(result ^ word, first_mixer);
  }
  std::uint64_t tail = 0;
  for (; left > 0; --left, ++bytes) {
    tail = tail << 8U | static_cast<unsigned char>(*bytes);
  }
  return mix(result ^ tail, first_mixer);
}

/**
 * Hash functor of the containers. A pointer gives its address and a number or enumerator its value
 * (read as unsigned and widened with zeros), both unmixed: tables take it modulo a prime.
 */
template <typename Key>
struct hash {
  static_assert(std::is_pointer_v<Key> || std::is_integral_v<Key> || std::is_enum_v<Key>,
                "no hash for this key");
  static_assert(!std::is_same_v<Key, Term*>,
                "terms are kept as const Term*, which hash by their id");

  std::uint64_t operator()(Key key) const noexcept {
    if constexpr (std::is_pointer_v<Key>) {
      return std::bit_cast<std::uintptr_t>(key);
    } else if constexpr (std::is_same_v<Key, bool>) {
      return key ? 1 : 0;
    } else {
      static_assert(sizeof(Key) <= sizeof(std::uint64_t), "the key is wider than its hash");
      return static_cast<std::make_unsigned_t<Key>>(key);
    }
  }
};

/**
 * Hash of a term: its id, so that the order of a table does not depend on addresses. Defined where
 * `Term` is; declared here so that no table of terms can be made without it.
 */
template <>
struct hash<const Term*>;

template <>
struct hash<std::string_view> {
  std::uint64_t operator()(std::string_view key) const noexcept { return hash_bytes(key); }
};

template <>
struct hash<std::string> {
  std::uint64_t operator()(const std::string& key) const noexcept { return hash_bytes(key); }
};

}  // namespace hsh
}  // namespace brum

#endif
