#include "brum/terms/term_store.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "brum/terms/term_manager.h"

namespace brum {

namespace {

constexpr std::size_t smallest_table = 64;
constexpr std::size_t smallest_chunk = std::size_t{1} << 12U;
constexpr std::size_t largest_chunk = huge_page_bytes;
constexpr std::size_t fetched_ahead = 16;

std::uint64_t word(const void* address) {
  return reinterpret_cast<std::uintptr_t>(address);
}

std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
  hash = (hash ^ value) * 0x9E3779B97F4A7C15U;
  return hash ^ (hash >> 32U);
}

std::uint64_t hash_of(const Symbol* symbol, std::span<const Term* const> arguments) {
  std::uint64_t hash = mix(0, word(symbol));
  for (const Term* argument : arguments) {
    hash = mix(hash, word(argument));
  }
  return hash;
}

bool is_application(const Term* term, const Symbol* symbol,
                    std::span<const Term* const> arguments) {
  if (term->symbol != symbol) {
    return false;
  }
  for (std::size_t i = 0; i < arguments.size(); ++i) {  // mostly two: std::equal calls memcmp
    if (term->children[i] != arguments[i]) {
      return false;
    }
  }
  return true;
}

/// Of one or more terms the one that was made last.
const Term* youngest_of(std::span<const Term* const> terms) {
  const Term* youngest = terms.front();
  for (const Term* term : terms.subspan(1)) {
    if (term->id > youngest->id) {
      youngest = term;
    }
  }
  return youngest;
}

[[noreturn]] void refuse_foreign_term(const Symbol* symbol) {
  throw TermManager::error(std::string(symbol->name_view()) +
                           ": an argument is a term of another manager, expected one of this");
}

}  // namespace

std::size_t TermStore::bytes_of(std::size_t arity) {
  // NOLINTNEXTLINE(bugprone-sizeof-expression): the arguments are pointers
  return sizeof(Notes) + sizeof(Term) + arity * sizeof(const Term*);
}

std::size_t TermStore::first_empty_slot(std::uint64_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (!slots_[slot].is_empty()) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

void TermStore::empty_slot_of(const Term* term) noexcept {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash_of(term->symbol, term->arguments()) & mask;
  while (slots_[slot].term() != term) {
    slot = (slot + 1) & mask;
  }
  slots_[slot] = {};
}

inline void TermStore::make_room_in_table() {
  if ((num_in_table_ + 1) * 4 > slots_.size() * 3) {
    grow_table();
  }
}

[[gnu::noinline]] void TermStore::grow_table() {
  const std::size_t new_size = std::max(smallest_table, slots_.size() * 2);
  slots_ = LargeArray<Slot>(new_size);
  // Terms go in again in the order of their ids: memory is read from front to back, and no term is
  // placed behind one that was made later, on which roll_back relies. Their slots are all over the
  // table, so each is fetched into the cache some terms before its turn.
  struct Waiting {
    const Term* term;
    std::uint64_t hash;
  };
  std::array<Waiting, fetched_ahead> waiting;
  std::size_t fetched = 0;
  for (const Chunk& chunk : chunks_) {
    for (std::size_t offset = 0; offset < chunk.used;) {
      const Term* const term = term_at(chunk, offset);
      offset += bytes_of(term->symbol->arity);
      if (!notes_of(term).is_in_table()) {
        continue;
      }
      Waiting& next = waiting[fetched % fetched_ahead];
      if (fetched >= fetched_ahead) {
        slots_[first_empty_slot(next.hash)] = {next.term, next.hash};
      }
      next = {term, hash_of(term->symbol, term->arguments())};
      __builtin_prefetch(&slots_[next.hash & (new_size - 1)], 1);
      ++fetched;
    }
  }
  for (std::size_t i = fetched - std::min(fetched, fetched_ahead); i < fetched; ++i) {
    const Waiting& last = waiting[i % fetched_ahead];
    slots_[first_empty_slot(last.hash)] = {last.term, last.hash};
  }
}

const Term* TermStore::term_at(const Chunk& chunk, std::size_t offset) noexcept {
  return reinterpret_cast<const Term*>(chunk.memory.begin() + offset + sizeof(Notes));
}

inline TermStore::Chunk& TermStore::chunk_with_room(std::size_t bytes) {
  if (chunks_.empty() || chunks_.back().memory.size() - chunks_.back().used < bytes) {
    add_chunk(bytes);
  }
  return chunks_.back();
}

[[gnu::noinline]] void TermStore::add_chunk(std::size_t least_bytes) {
  const std::size_t usual =
      chunks_.empty() ? smallest_chunk : std::min(chunks_.back().memory.size() * 2, largest_chunk);
  chunks_.push_back({LargeBlock(std::max(usual, least_bytes)), 0});
}

/// Gives the distance from `term` to the one that will be made next in `chunk`. It is Notes::far
/// for a term that lies elsewhere: only within a chunk it is certain that both die together, as
/// nothing else shows that a term is one of this store. A chunk that was made for a wide term may
/// serve again, so that others in it lie farther apart than a note can say.
inline std::uint64_t TermStore::distance_to_next(const Chunk& chunk, const Term* term) noexcept {
  const std::uint64_t end = word(chunk.memory.begin()) + chunk.used;
  const std::uint64_t bytes = end + sizeof(Notes) - word(term);
  return bytes <= chunk.used ? std::min(bytes / sizeof(Notes), Notes::far) : Notes::far;
}

inline const Term* TermStore::at_distance(const Term* term, std::uint64_t words) noexcept {
  return reinterpret_cast<const Term*>(reinterpret_cast<const std::byte*>(term) +
                                       words * sizeof(Notes));
}

/// Makes a new term in a chunk that has room for it. It is in no table yet.
inline const Term* TermStore::add(Chunk& chunk, const Symbol* symbol,
                                  std::span<const Term* const> arguments) {
  std::byte* const place = chunk.memory.begin() + chunk.used;
  new (place) Notes;
  Term* const term = new (place + sizeof(Notes)) Term(++num_terms_, symbol);
  std::copy(arguments.begin(), arguments.end(), static_cast<const Term**>(term->children));
  for (const Term* argument : arguments) {
    notes_of(argument).add_use();
  }
  chunk.used += bytes_of(arguments.size());
  return term;
}

/// Gives an application that is nobody's first user, or one of which no note says where it lies.
const Term* TermStore::apply_in_table(const Symbol* symbol,
                                      std::span<const Term* const> arguments) {
  make_room_in_table();
  const std::uint64_t hash = hash_of(symbol, arguments);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; !slots_[slot].is_empty(); slot = (slot + 1) & mask) {
    if (slots_[slot].may_hold(hash) && is_application(slots_[slot].term(), symbol, arguments)) {
      return slots_[slot].term();
    }
  }
  const Term* const term = add(chunk_with_room(bytes_of(arguments.size())), symbol, arguments);
  slots_[slot] = {term, hash};
  notes_of(term).put_into_table();
  ++num_in_table_;
  return term;
}

/// Gives the term of a constant. Its symbol notes it if symbol, sort and store are of one manager,
/// so that none of them outlives the others.
const Term* TermStore::constant(const Symbol* symbol) {
  if (!symbol->at_home_ || !sorts_.holds(symbol->type)) {
    return apply_in_table(symbol, {});
  }
  if (symbol->constant_ == nullptr) {
    symbol->constant_ = add(chunk_with_room(bytes_of(0)), symbol, {});
  }
  return symbol->constant_;
}

const Term* TermStore::apply(const Symbol* symbol, std::span<const Term* const> arguments) {
  if (arguments.empty()) {
    return constant(symbol);
  }
  const Term* const youngest = youngest_of(arguments);
  if (youngest->id > size()) [[unlikely]] {
    refuse_foreign_term(symbol);
  }
  Notes& notes = notes_of(youngest);
  const std::uint64_t first_user = notes.first_user();
  if (first_user == Notes::none) {
    Chunk& chunk = chunk_with_room(bytes_of(arguments.size()));
    const std::uint64_t distance = distance_to_next(chunk, youngest);
    const Term* const term =
        distance == Notes::far ? apply_in_table(symbol, arguments) : add(chunk, symbol, arguments);
    notes.set_first_user(distance);
    return term;
  }
  if (first_user != Notes::far) {
    const Term* const term = at_distance(youngest, first_user);
    if (is_application(term, symbol, arguments)) {
      return term;
    }
  }
  return apply_in_table(symbol, arguments);
}

void TermStore::forget(const Term* term) noexcept {
  if (notes_of(term).is_in_table()) {
    empty_slot_of(term);
    --num_in_table_;
  } else if (term->symbol->arity == 0) {
    term->symbol->constant_ = nullptr;
  } else {
    notes_of(youngest_of(term->arguments())).set_first_user(Notes::none);
  }
  for (const Term* argument : term->arguments()) {
    notes_of(argument).take_use();
  }
}

void TermStore::roll_back(std::size_t old_size) noexcept {
  if (size() == old_size) {
    return;
  }
  // The terms to forget are the tail of the last chunks: find where the tail begins, then drop it.
  for (std::size_t index = chunks_.size(); index-- > 0;) {
    Chunk& chunk = chunks_[index];
    std::size_t kept = chunk.used;
    for (std::size_t offset = 0; offset < chunk.used;) {
      const Term* const term = term_at(chunk, offset);
      if (term->id > old_size) {
        kept = std::min(kept, offset);
        forget(term);
      }
      offset += bytes_of(term->symbol->arity);
    }
    const bool begins_here = kept > 0;
    chunk.used = kept;
    if (begins_here) {
      break;
    }
  }
  num_terms_ = old_size;
}

}  // namespace brum
