#ifndef BRUM_UTILS_SCOPE_EXIT_H
#define BRUM_UTILS_SCOPE_EXIT_H

#include <utility>

namespace brum {

/// Calls a function when the scope is left, also by an exception. The function must not throw.
///
///     flag = true;
///     const ScopeExit restore([&] { flag = false; });
template <class Function>
class ScopeExit {
 public:
  explicit ScopeExit(Function function) : function_(std::move(function)) {}
  ScopeExit(const ScopeExit&) = delete;
  ScopeExit& operator=(const ScopeExit&) = delete;
  ~ScopeExit() { function_(); }

 private:
  Function function_;
};

}  // namespace brum

#endif  // BRUM_UTILS_SCOPE_EXIT_H
