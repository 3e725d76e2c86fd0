#ifndef BRUM_TESTS_SUPPORT_COUNTED_H
#define BRUM_TESTS_SUPPORT_COUNTED_H

namespace brum::testing {

/// Counts its objects, so that a value that is lost shows in every build.
struct Counted {
  static inline int alive = 0;
  Counted() { ++alive; }
  Counted(const Counted& /*other*/) { ++alive; }
  Counted& operator=(const Counted&) = default;
  ~Counted() { --alive; }
};

}  // namespace brum::testing

#endif  // BRUM_TESTS_SUPPORT_COUNTED_H
