#ifndef BRUM_TESTS_SUPPORT_SMALL_STACK_H
#define BRUM_TESTS_SUPPORT_SMALL_STACK_H

#include <cstddef>
#include <functional>

namespace brum::testing {

/// The stack that everything must be content with, in bytes: that of `ulimit -s 256`.
inline constexpr std::size_t small_stack_bytes = std::size_t{256} * 1024;

/**
 * Runs `body` to its end on a thread of its own whose stack has `bytes` bytes, so that whatever
 * recurses on the depth of a large formula crashes. An exception of `body` comes out of the call.
 *
 *     run_on_small_stack([] { TermManager mgr; build_deep_formula(mgr); });
 */
void run_on_small_stack(const std::function<void()>& body, std::size_t bytes = small_stack_bytes);

}  // namespace brum::testing

#endif
