#include "brum/printers/term_texts.h"

#include <algorithm>
#include <utility>

#include "brum/printers/write_text.h"
#include "brum/terms/prefetch_term.h"
#include "brum/utils/scope_exit.h"

namespace brum {

namespace {
/// How many terms before a term's turn what it needs is fetched into the cache, each thing after
/// those that lead to it: the order jumps about in the store, and memory is slow to answer.
constexpr std::size_t term_ahead = 32;
constexpr std::size_t symbol_ahead = 24;
constexpr std::size_t arguments_ahead = 16;
constexpr std::size_t far_buckets_ahead = 8;
constexpr std::size_t far_nodes_ahead = 4;

/// Orders of fewer terms need no fetching: those are in the cache since they were walked over. Nor
/// do maps of fewer buckets.
constexpr std::size_t fewest_prefetched = 4096;

/// Room in a long text for what comes with the texts that are lent: the operator and labels.
constexpr std::size_t room_beside_lent = 1024;

/// How many bytes of memory a pending text may have beyond four times its length.
constexpr std::size_t most_spare_bytes = 128;

/// True when `argument` was made so long before `term` that its place in the map may have left the
/// cache since it was last needed.
inline bool is_far(const Term* argument, const Term* term) {
  constexpr std::uint64_t near_terms = 4096;
  return term->id - argument->id > near_terms;
}

/// True for a text that has far more memory than `bytes` bytes need: it may be kept for long.
bool is_roomy(const std::string& text, std::size_t bytes) noexcept {
  return text.capacity() > bytes * 4 + most_spare_bytes;
}

/// Empties a text and gives its memory back, which an assignment would keep.
void free_memory_of(std::string& text) noexcept {
  std::string().swap(text);
}

/// Puts a text in the place of another, whose memory it takes if that is enough.
inline void put_text(std::string& kept, std::string_view text) {
  kept.assign(text);
}

/// Puts a text in the place of another and gives that instead, whose memory may serve again.
inline void put_text(std::string& kept, std::string&& text) {
  kept.swap(text);
}

/// Moves a text to where a hook wants it. A short one is copied, but not into the memory of one
/// that was far longer.
inline void lend_text(std::string& to, std::string& from) {
  if (is_roomy(to, from.size())) {
    free_memory_of(to);
  }
  to = std::move(from);
}

/// Copies a text that mostly is a label, and mostly as long as the one in whose place it comes.
inline void copy_label(std::string& to, std::string_view from) {
  if (to.size() < from.size()) {
    to = from;
    return;
  }
  if (to.size() > from.size()) {
    to.resize(from.size());
  }
  copy_text(to.data(), from.data(), from.size());
}
}  // namespace

TermTexts::TermTexts(TermPrinter& printer, std::ostream& out, const DefinitionRule& rule,
                     const ReferenceCounts& counts)
    : printer_(printer),
      out_(out),
      rule_(rule),
      defs_(nullptr),
      is_fetching_(counts.num_shared() >= fewest_prefetched) {
  if (counts.num_shared() != 0) {
    references_.expect_terms(counts.num_terms(), counts.highest_id());
  }
}

TermTexts::TermTexts(TermPrinter& printer, std::ostream& out, const DefinitionRule& rule,
                     DefinitionMap& defs)
    : printer_(printer), out_(out), rule_(rule), defs_(&defs), num_entries_(defs.size()) {}

void TermTexts::reserve_entries(std::size_t num_new) {
  const std::size_t num_entries = defs_->size() + num_new;
  defs_->expect_nodes(num_new);
  defs_->grow_safely(num_entries / 7 * 10 + 10);  // tables grow at a load of 0.7
  is_fetching_ = defs_->bucket_count() >= fewest_prefetched;
}

// All three are always inline, as GCC 12 drops all fetching from a function of its own.

[[gnu::always_inline]] inline void TermTexts::prefetch(std::span<const Term* const> coming) const {
  prefetch_term(coming[term_ahead]);
  __builtin_prefetch(coming[symbol_ahead]->symbol);
  const Term* next = coming[arguments_ahead];
  rule_.prefetch(next);
  for (const Term* argument : next->arguments()) {
    __builtin_prefetch(argument);
  }
}

[[gnu::always_inline]] inline void TermTexts::prefetch_in_map(
    std::span<const Term* const> coming) const {
  defs_->prefetch(coming[arguments_ahead]);
  const Term* next = coming[far_buckets_ahead];
  for (const Term* argument : next->arguments()) {
    if (is_far(argument, next)) {
      defs_->prefetch(argument);
    }
  }
  next = coming[far_nodes_ahead];
  for (const Term* argument : next->arguments()) {
    if (is_far(argument, next)) {
      defs_->prefetch_node(argument);
    }
  }
}

[[gnu::always_inline]] inline void TermTexts::prefetch_references(
    std::span<const Term* const> coming) const {
  references_.prefetch(coming[arguments_ahead]);
  const Term* next = coming[far_buckets_ahead];
  for (const Term* argument : next->arguments()) {
    if (is_far(argument, next)) {
      references_.prefetch(argument);
    }
  }
}

const std::string& TermTexts::write(const Term* term, std::span<const Term* const> order) {
  num_pending_ = 0;
  root_ = term;
  const std::size_t num_fetching = order.size() < fewest_prefetched ? 0 : order.size() - term_ahead;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i < num_fetching) {
      if (is_fetching_) {
        if (defs_ != nullptr) {
          prefetch_in_map(order.subspan(i));
        } else {
          prefetch_references(order.subspan(i));
        }
      }
      prefetch(order.subspan(i));
    }
    handle(order[i]);
  }
  if (defs_ != nullptr) {
    return defs_->find(term)->second;
  }
  if (num_pending_ != 0) {  // what no place refers to is pending still
    return pending_[num_pending_ - 1].own_text;
  }
  result_ = references_.get(term);
  return result_;
}

/// Gives the text by which later text refers to a term that was handled and is not pending.
inline std::string_view TermTexts::reference_to(const Term* term) const {
  return defs_ != nullptr ? std::string_view(defs_->find(term)->second) : references_.get(term);
}

inline TermTexts::Texts& TermTexts::texts_for(std::size_t arity) {
  Texts& texts = texts_[std::min(arity, texts_.size() - 1)];
  if (texts.size() != arity) {
    texts.resize(arity);
  }
  return texts;
}

// The hook wants the texts of the arguments side by side. One that only this term refers to is lent
// instead of being copied, unless it is the map's. Those were handled from left to right, so from
// the right each is the last of the pending ones. To all other arguments several places may refer.
// Always inline: GCC 12 would rather not, and it runs once for every application.
[[gnu::always_inline]] inline void TermTexts::borrow_texts(const Term* term, Texts& children,
                                                           Loan& loan) {
  for (std::size_t i = term->symbol->arity; i-- > 0;) {
    const Term* argument = term->children[i];
    if (loan.first == 0 || pending_[loan.first - 1].term != argument) {
      copy_label(children[i], reference_to(argument));
      continue;
    }
    Pending& lent = pending_[--loan.first];
    loan.levels = std::max(loan.levels, lent.levels);
    if (lent.text_in_map == nullptr) {
      lend_text(children[i], lent.own_text);
    } else {
      children[i] = *lent.text_in_map;  // a hook may look into the map
    }
    loan.bytes += children[i].size();
  }
}

/// Ends that the terms from `first_lent` on are pending. What is pending next takes the place of
/// the first; the others may not be needed again for long.
inline void TermTexts::end_loan(std::size_t first_lent) noexcept {
  for (std::size_t i = first_lent; i < num_pending_; ++i) {
    Pending& lent = pending_[i];
    if (i != first_lent && lent.own_text.capacity() > most_spare_bytes) {
      free_memory_of(lent.own_text);
    }
  }
  num_pending_ = first_lent;
}

template <class WriteText>
inline void TermTexts::define(const Term* term, const WriteText& write_text) {
  label_.clear();
  printer_.get_define_label(term, label_);
  printer_.print_define_start(out_, label_, term);
  write_text();
  printer_.print_define_end(out_, term);
}

/// Adds a term to the pending ones; its text is yet to be put in.
inline TermTexts::Pending& TermTexts::add_pending(const Term* term, std::uint32_t levels) {
  if (num_pending_ == pending_.size()) {
    pending_.emplace_back();
  }
  Pending& pending = pending_[num_pending_++];
  pending.term = term;
  pending.levels = levels;
  return pending;
}

/// Keeps the text of a term that a hook has printed into the map meanwhile.
[[gnu::noinline]] void TermTexts::replace_text(const Term* term, std::string_view text) {
  defs_->find(term)->second = std::string(text);
}

/// Keeps the text of a term that was handled where it is found when it is referred to.
template <class Text>
inline void TermTexts::enter(const Term* term, Text&& text, bool is_shared, std::uint32_t levels) {
  if (defs_ != nullptr) {
    enter_in_map(term, std::forward<Text>(text), is_shared, levels);
  } else if (is_shared) {
    references_.insert(term, text);
  } else {
    Pending& pending = add_pending(term, levels);
    if (is_roomy(pending.own_text, text.size())) {
      free_memory_of(pending.own_text);
    }
    put_text(pending.own_text, std::forward<Text>(text));
  }
}

template <class Text>
inline void TermTexts::enter_in_map(const Term* term, Text&& text, bool is_shared,
                                    std::uint32_t levels) {
  if (is_entered(term)) [[unlikely]] {
    replace_text(term, text);
    return;
  }
  std::string* const kept = &defs_->insert_absent(term, std::forward<Text>(text))->second;
  ++num_entries_;
  if (!is_shared && term->symbol->arity != 0) {
    add_pending(term, levels).text_in_map = kept;
  }
}

/// Whether the map holds a term that is yet to be handled: a hook has printed terms into it, then.
inline bool TermTexts::is_entered(const Term* term) const {
  return defs_ != nullptr && defs_->size() != num_entries_ && defs_->find(term) != defs_->end();
}

/// Gives the text of a term that is written inline or defined for its length. It lies in
/// `long_text_` when the loan is long, in `short_text_` when not.
inline std::string_view TermTexts::spell(const Term* term, const Texts& children,
                                         const Loan& loan) {
  if (loan.is_long()) [[unlikely]] {
    return spell_long(term, children, loan);
  }
  short_text_.clear_text();
  printer_.print_term_and_children(short_text_, term, children);
  return short_text_.text();
}

[[gnu::noinline]] std::string_view TermTexts::spell_long(const Term* term, const Texts& children,
                                                         const Loan& loan) {
  StringStream& stream = long_text_ ? *long_text_ : long_text_.emplace();
  stream.begin_text(loan.bytes + room_beside_lent);
  printer_.print_term_and_children(stream, term, children);
  std::string& text = stream.text();
  if (is_roomy(text, text.size())) {
    text.shrink_to_fit();  // a hook has left out what it was lent
  }
  return text;
}

[[gnu::noinline]] void TermTexts::enter_long(const Term* term, bool is_shared,
                                             std::uint32_t levels) {
  enter(term, std::move(long_text_->text()), is_shared, levels);
}

inline void TermTexts::handle(const Term* term) {
  if (is_entered(term)) [[unlikely]] {
    return;
  }
  const bool is_shared = rule_.has_several_places(term);
  if (term->symbol->arity == 0) {
    enter(term, spell(term, texts_for(0), Loan()), is_shared, 0);
  } else {
    handle_application(term, is_shared);
  }
}

inline void TermTexts::handle_application(const Term* term, bool is_shared) {
  bool is_defined = false;
  Loan loan{num_pending_};
  {
    Texts& children = texts_for(term->symbol->arity);
    const ScopeExit end([&] { end_loan(loan.first); });
    borrow_texts(term, children, loan);
    ++loan.levels;
    is_defined = is_shared || (term != root_ && rule_.exceeds_levels(loan.levels));
    if (is_defined) {
      loan.levels = 0;
      define(term, [&] { printer_.print_term_and_children(out_, term, children); });
    } else {
      const std::string_view text = spell(term, children, loan);
      // A definition for its length alone has no effect on the count of levels: no rule limits
      // both.
      is_defined = rule_.exceeds_bytes(text.size());
      if (is_defined) {
        define(term, [&] { write_text(out_, text); });
      }
    }
  }
  if (is_defined) {
    enter(term, std::move(label_), is_shared, loan.levels);
  } else if (loan.is_long()) [[unlikely]] {
    enter_long(term, is_shared, loan.levels);
  } else {
    enter(term, short_text_.text(), is_shared, loan.levels);
  }
}

}  // namespace brum
