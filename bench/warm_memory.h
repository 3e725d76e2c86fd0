#ifndef BRUM_BENCH_WARM_MEMORY_H
#define BRUM_BENCH_WARM_MEMORY_H

namespace brum::bench {

/// Touches a GiB of free memory and frees it again, to be called before what is timed. Throws
/// std::bad_alloc where there is not as much.
///
/// Where a hypervisor takes back memory that no process has used for some seconds, the first touch
/// of a page costs 40 times what it costs on a machine of one's own, and it falls to whichever run
/// comes after a pause.
void warm_memory();

}  // namespace brum::bench

#endif  // BRUM_BENCH_WARM_MEMORY_H
