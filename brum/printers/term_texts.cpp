#include "brum/printers/term_texts.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "brum/printers/text_piece.h"
#include "brum/printers/write_text.h"
#include "brum/terms/prefetch_term.h"
#include "brum/utils/scope_exit.h"

namespace brum {

namespace {
/// What a term needs is fetched into the cache in four steps, each so many terms after the one
/// before: the order jumps about in the store, and what waits for memory waits long.
constexpr std::size_t prefetch_step = 8;

/// True when `argument` was made so long before `term` that its place in the map may have left the
/// cache since it was last needed.
inline bool is_far(const Term* argument, const Term* term) {
  constexpr std::uint64_t near_terms = 4096;
  return term->id - argument->id > near_terms;
}

/// Empties a text and gives its memory back, which an assignment would keep.
void free_memory_of(std::string& text) noexcept {
  std::string().swap(text);
}

bool has_own_memory(const std::string& text) noexcept {
  return text.capacity() > std::string().capacity();
}

/// Copies a text that mostly is a label, and mostly as long as the one in whose place it comes.
inline void copy_label(std::string& to, const std::string& from) {
  if (to.size() == from.size()) {
    copy_text(to.data(), from.data(), from.size());
  } else {
    to = from;
  }
}
}  // namespace

void TermTexts::reserve(std::size_t num_terms) {
  defs_.expect_nodes(num_terms - defs_.size());
  defs_.rehash(num_terms / 7 * 10 + 10);  // tables grow at a load of 0.7
}

/// Always inline, as GCC 12 drops all fetching from a function of its own.
[[gnu::always_inline]] inline void TermTexts::prefetch(std::span<const Term* const> coming) const {
  if (coming.size() <= 4 * prefetch_step) {
    return;
  }
  prefetch_term(coming[4 * prefetch_step]);
  __builtin_prefetch(coming[3 * prefetch_step]->symbol);
  const Term* const third = coming[2 * prefetch_step];
  defs_.prefetch(third);
  rule_.prefetch(third);
  for (const Term* argument : third->arguments()) {
    __builtin_prefetch(argument);
  }
  const Term* const second = coming[prefetch_step];
  for (const Term* argument : second->arguments()) {
    if (is_far(argument, second)) {
      defs_.prefetch(argument);
    }
  }
  const Term* const first = coming[prefetch_step / 2];
  for (const Term* argument : first->arguments()) {
    if (is_far(argument, first)) {
      defs_.prefetch_node(argument);
    }
  }
}

const std::string& TermTexts::write(const Term* term, std::span<const Term* const> order) {
  end_root();
  root_ = term;
  for (std::size_t i = 0; i < order.size(); ++i) {
    prefetch(order.subspan(i));
    handle(order[i]);
  }
  return defs_.find(term)->second;
}

// Of the inline texts only that of the root is pending at the end, as no place refers to it.
inline void TermTexts::end_root() noexcept {
  if (inline_texts_ == InlineTexts::release) {
    for (const Pending& root : pending_) {
      free_memory_of(*root.text);
    }
  }
  pending_.clear();
}

void TermTexts::abandon_map() noexcept {
  end_root();
  for (std::string* text : long_texts_) {
    free_memory_of(*text);
  }
  defs_.abandon();
}

inline TermTexts::Texts& TermTexts::texts_for(std::size_t arity) {
  Texts& texts = texts_[std::min(arity, texts_.size() - 1)];
  if (texts.size() != arity) {
    texts.resize(arity);
  }
  return texts;
}

// The hook wants the texts of the arguments side by side. One that only this term refers to is lent
// from its place in the map instead of being copied. Those were handled from left to right, so from
// the right each is the last of the pending ones. All other arguments have a text that several
// places may refer to: the names of constants, labels, and what the map held before.
// `first_lent` is where the lent ones begin, `levels` becomes the most of any of them.
inline void TermTexts::borrow_texts(const Term* term, Texts& children,
                                    PendingTerms::iterator& first_lent, std::uint32_t& levels) {
  for (std::size_t i = term->symbol->arity; i-- > 0;) {
    const Term* argument = term->children[i];
    if (first_lent == pending_.begin() || std::prev(first_lent)->term != argument) {
      copy_label(children[i], defs_.find(argument)->second);
      continue;
    }
    Pending& lent = *--first_lent;
    lent.place = static_cast<std::uint32_t>(i);
    levels = std::max(levels, lent.levels);
    // Through a third string, so that the map's own does not inherit memory.
    children[i] = std::string(std::move(*lent.text));
  }
}

/// Gives the lent texts back to the map, or lets them go; the memory of some then serves for texts
/// to come.
inline void TermTexts::end_loan(PendingTerms::iterator first_lent, Texts& children) noexcept {
  if (first_lent == pending_.end()) {
    return;
  }
  for (auto lent = first_lent; lent != pending_.end(); ++lent) {
    std::string& text = children[lent->place];
    if (inline_texts_ == InlineTexts::keep) {
      *lent->text = std::move(text);
    } else if (has_own_memory(text) && num_spare_texts_ < spare_texts_.size()) {
      spare_texts_[num_spare_texts_++].swap(text);
    }
  }
  pending_.erase(first_lent, pending_.end());
}

/// Gives what was written to `inline_text_`, in the memory of a spare text if that is not much too
/// large.
inline std::string TermTexts::inline_text() {
  const std::string_view text = inline_text_.text();
  if (num_spare_texts_ == 0 || text.size() <= std::string().capacity() ||
      spare_texts_[num_spare_texts_ - 1].capacity() / 4 > text.size()) {
    return std::string(text);
  }
  std::string& spare = spare_texts_[--num_spare_texts_];
  spare.assign(text);
  return std::move(spare);
}

/// Enters `term`, which the map does not hold, with its whole text.
inline std::string* TermTexts::keep(const Term* term, std::string&& text) {
  return &defs_.insert_absent(term, std::move(text))->second;
}

/// The same for a text that is lent to none.
inline std::string* TermTexts::keep_for_good(const Term* term, std::string&& text) {
  std::string* const kept = keep(term, std::move(text));
  if (inline_texts_ == InlineTexts::release && has_own_memory(*kept)) {
    long_texts_.push_back(kept);
  }
  return kept;
}

template <class WriteText>
std::string TermTexts::write_definition(const Term* term, const WriteText& write_text) {
  std::string label;
  printer_.get_define_label(term, label);
  printer_.print_define_start(out_, label, term);
  write_text();
  printer_.print_define_end(out_, term);
  return label;
}

inline std::string* TermTexts::define(const Term* term, const Texts& children) {
  return keep_for_good(term, write_definition(term, [&] {
                         printer_.print_term_and_children(out_, term, children);
                       }));
}

// A definition for its length alone has no effect on the count of levels: no rule limits both.
inline std::string* TermTexts::write_inline(const Term* term, const Texts& children) {
  inline_text_.clear_text();
  printer_.print_term_and_children(inline_text_, term, children);
  const std::string_view text = inline_text_.text();
  if (rule_.exceeds_bytes(text.size())) {
    return keep_for_good(term, write_definition(term, [&] { write_text(out_, text); }));
  }
  return keep(term, inline_text());
}

inline void TermTexts::handle_leaf(const Term* term) {
  inline_text_.clear_text();
  printer_.print_term_and_children(inline_text_, term, texts_for(0));
  keep_for_good(term, std::string(inline_text_.text()));
}

inline void TermTexts::handle(const Term* term) {
  if (term->symbol->arity == 0) {
    handle_leaf(term);
    return;
  }
  const bool is_shared = rule_.is_shared(term);
  std::string* text = nullptr;
  std::uint32_t levels = 0;
  {
    Texts& children = texts_for(term->symbol->arity);
    auto first_lent = pending_.end();
    const ScopeExit end([&] { end_loan(first_lent, children); });
    borrow_texts(term, children, first_lent, levels);
    ++levels;
    if (is_shared || (term != root_ && rule_.exceeds_levels(levels))) {
      levels = 0;
      text = define(term, children);
    } else {
      text = write_inline(term, children);
    }
  }
  if (!is_shared) {
    pending_.push_back({term, text, levels, 0});
  }
}

}  // namespace brum
