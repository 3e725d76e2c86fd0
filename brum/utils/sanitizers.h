#ifndef BRUM_UTILS_SANITIZERS_H
#define BRUM_UTILS_SANITIZERS_H

// Which sanitizers this build has, for code that manages memory: each of them watches the blocks
// of its own allocator, and all but AddressSanitizer lay out the address space themselves.
// Defines BRUM_ADDRESS_SANITIZER, BRUM_THREAD_SANITIZER and BRUM_MEMORY_SANITIZER, each to 0 or 1.

#ifdef __has_feature
#define BRUM_HAS_FEATURE(name) __has_feature(name)
#else
#define BRUM_HAS_FEATURE(name) 0
#endif

#if defined(__SANITIZE_ADDRESS__) || BRUM_HAS_FEATURE(address_sanitizer)
#define BRUM_ADDRESS_SANITIZER 1
#else
#define BRUM_ADDRESS_SANITIZER 0
#endif

#if defined(__SANITIZE_THREAD__) || BRUM_HAS_FEATURE(thread_sanitizer)
#define BRUM_THREAD_SANITIZER 1
#else
#define BRUM_THREAD_SANITIZER 0
#endif

#if BRUM_HAS_FEATURE(memory_sanitizer)
#define BRUM_MEMORY_SANITIZER 1
#else
#define BRUM_MEMORY_SANITIZER 0
#endif

#endif  // BRUM_UTILS_SANITIZERS_H
