#ifndef BRUM_BENCH_SCRIPT_FILES_H
#define BRUM_BENCH_SCRIPT_FILES_H

#include <array>
#include <cstddef>
#include <filesystem>
#include <string_view>

namespace brum::bench {

/// The scripts of SMT-LIB 2.6 that reading and converting are timed on. They are written from
/// random numbers, by no printer, and the same in every run. They ask for nothing, as a solver that
/// converts one would then solve it.
enum class ScriptKind {
  /// Many assertions, each a clause of linear inequalities and equalities over 1000 integers.
  clauses,
  /// One assertion, a nest of lets of random sums over the bindings around them.
  lets,
  /// Many sums, each with a define-fun, and comparisons of recent ones.
  definitions,
  /// Many assertions over bit-vectors of 32 bits: arithmetic, parts, shifts and constants.
  bit_vectors,
};

struct NamedKind {
  ScriptKind kind;
  std::string_view name;
};

inline constexpr std::array<NamedKind, 4> script_kinds = {
    {{ScriptKind::clauses, "clauses"},
     {ScriptKind::lets, "lets"},
     {ScriptKind::definitions, "definitions"},
     {ScriptKind::bit_vectors, "bit-vectors"}}};

/// A file in the system's directory for temporary files, there as long as the object.
class ScriptFile {
 public:
  /// Writes a script of this kind with at least `bytes` bytes. Throws std::system_error and
  /// std::ios_base::failure.
  ScriptFile(NamedKind kind, std::size_t bytes);
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;
  ~ScriptFile();

  const std::filesystem::path& path() const { return path_; }
  std::size_t size() const { return size_; }

 private:
  std::filesystem::path path_;
  std::size_t size_ = 0;
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_SCRIPT_FILES_H
