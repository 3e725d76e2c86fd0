#ifndef BRUM_UTILS_JOIN_FREED_MEMORY_H
#define BRUM_UTILS_JOIN_FREED_MEMORY_H

#include "brum/utils/export.h"

namespace brum {

/// Has the C library join the small pieces of memory that were freed since it last did so.
///
/// glibc puts freed pieces of up to 128 bytes into lists and joins neighbours all at once, when it
/// is next asked for more than a KiB. To join a million pieces then takes several times as long as
/// to free them, as they have left the cache. Whoever frees very many calls this now and then.
/// Where memory comes from elsewhere it does no more than take a piece and give it back.
BRUM_EXPORT void join_freed_memory() noexcept;

}  // namespace brum

#endif  // BRUM_UTILS_JOIN_FREED_MEMORY_H
