#include "tests/support/failing_memory.h"

#include <gmp.h>

#include <cerrno>
#include <cstdlib>
#include <new>

// The allocator that a definition of malloc in the program hides: that of a sanitizer if there is
// one, else that of the C library.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __interceptor_malloc(std::size_t size) __attribute__((weak));
}

namespace brum::testing {

namespace {

/** What to do with the allocations of a thread. Trivial, so that it is there from the first one. */
struct Plan {
  bool active;
  bool hit;
  bool lasting;
  std::size_t failing;
  std::size_t count;
};

thread_local Plan plan;

bool next_allocation_fails() noexcept {
  if (!plan.active) {
    return false;
  }
  ++plan.count;
  const bool fails = plan.lasting ? plan.count >= plan.failing : plan.count == plan.failing;
  plan.hit = plan.hit || fails;
  return fails;
}

void* real_malloc(std::size_t size) noexcept {
  return __interceptor_malloc != nullptr ? __interceptor_malloc(size) : __libc_malloc(size);
}

void* gmp_realloc(void* block, std::size_t /*old_size*/, std::size_t size) {
  return std::realloc(block, size);
}

void gmp_free(void* block, std::size_t /*size*/) {
  std::free(block);
}

}  // namespace

MemoryFault::MemoryFault(std::size_t failing, bool lasting) noexcept {
  mp_set_memory_functions(real_malloc, gmp_realloc, gmp_free);
  plan = Plan{true, false, lasting, failing, 0};
}

MemoryFault::~MemoryFault() {
  plan.active = false;
}

bool MemoryFault::hit() const noexcept {
  return plan.hit;
}

std::size_t MemoryFault::allocations() const noexcept {
  return plan.count;
}

}  // namespace brum::testing

extern "C" void* malloc(std::size_t size) {
  if (brum::testing::next_allocation_fails()) {
    errno = ENOMEM;
    return nullptr;
  }
  return brum::testing::real_malloc(size);
}

void* operator new(std::size_t size) {
  if (!brum::testing::next_allocation_fails()) {
    if (void* const block = brum::testing::real_malloc(size == 0 ? 1 : size); block != nullptr) {
      return block;
    }
  }
  throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
  return operator new(size);
}

// Those below replace what a sanitizer would otherwise put in place of the library's own, which
// calls the first one.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete[](void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
