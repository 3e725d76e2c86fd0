#include "brum/terms/sort_table.h"

#include <algorithm>
#include <array>
#include <new>

namespace brum {

std::uint64_t SortTable::HashSorts::operator()(std::span<const DataType* const> sorts) const {
  std::uint64_t hash = sorts.size();
  for (const DataType* sort : sorts) {
    hash = (hash ^ reinterpret_cast<std::uintptr_t>(sort)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return hash;
}

bool SortTable::SameSorts::operator()(std::span<const DataType* const> left,
                                      std::span<const DataType* const> right) const {
  return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

SortTable::SortTable(Arena& arena)
    : arena_(arena),
      boolean_(make(DataType::Kind::boolean, 0, nullptr, {})),
      integer_(make(DataType::Kind::integer, 0, nullptr, {})),
      real_(make(DataType::Kind::real, 0, nullptr, {})) {}

const DataType* SortTable::make(DataType::Kind kind, std::size_t width, const char* name,
                                std::span<const DataType* const> components) {
  void* place = arena_.allocate(sizeof(DataType));
  return new (place) DataType(*this, kind, width, name, components.data(), components.size());
}

const DataType* SortTable::bit_vector(std::size_t width) {
  if (const auto found = bit_vectors_.find(width); found != bit_vectors_.end()) {
    return found->second;
  }
  bit_vectors_.make_room();
  const DataType* sort = make(DataType::Kind::bit_vector, width, nullptr, {});
  bit_vectors_[width] = sort;
  return sort;
}

const DataType* SortTable::uninterpreted(std::string_view name) {
  if (const auto found = uninterpreted_.find(name); found != uninterpreted_.end()) {
    return found->second;
  }
  uninterpreted_.make_room();
  const std::string_view kept = arena_.copy(name);
  const DataType* sort = make(DataType::Kind::uninterpreted, 0, kept.data(), {});
  uninterpreted_[kept] = sort;
  return sort;
}

const DataType* SortTable::array(const DataType* index, const DataType* element) {
  return composite(arrays_, DataType::Kind::array, std::array{index, element});
}

const DataType* SortTable::function(std::span<const DataType* const> components) {
  return composite(functions_, DataType::Kind::function, components);
}

const DataType* SortTable::composite(Composites& table, DataType::Kind kind,
                                     std::span<const DataType* const> components) {
  if (const auto found = table.find(components); found != table.end()) {
    return found->second;
  }
  table.make_room();
  const auto kept = arena_.copy(components);
  const DataType* sort = make(kind, 0, nullptr, kept);
  table[kept] = sort;
  return sort;
}

}  // namespace brum
