#include "brum/printers/term_text_walk.h"

#include <algorithm>
#include <utility>

#include "brum/printers/write_text.h"
#include "brum/utils/scope_exit.h"

namespace brum {

void TermTextWalk::reserve(std::size_t num_terms) {
  defs_.rehash(num_terms + num_terms / 2);  // tables grow at a load of 0.7
}

inline TermTextWalk::Texts& TermTextWalk::texts_for(std::size_t arity) {
  Texts& texts = texts_[std::min(arity, texts_.size() - 1)];
  if (texts.size() != arity) {
    texts.resize(arity);
  }
  return texts;
}

// The hook wants the texts of the arguments side by side. A long text that only this term refers to
// is lent from its place in the map instead of being copied. Copies are made first: should the same
// text stand in two places after all, it is still there when the second is filled.
inline void TermTextWalk::lend_texts(const Argument* arguments, Texts& children) const {
  bool any_movable = false;
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (arguments[i].movable) {
      any_movable = true;
    } else {
      children[i] = *arguments[i].text;
    }
  }
  for (std::size_t i = 0; any_movable && i < children.size(); ++i) {
    if (arguments[i].movable) {
      // Through a third string, so that the map's own does not inherit the old buffer.
      std::string(std::move(*arguments[i].text)).swap(children[i]);
    }
  }
}

inline void TermTextWalk::take_texts_back(const Argument* arguments,
                                          Texts& children) const noexcept {
  if (inline_texts_ == InlineTexts::release) {
    return;
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (arguments[i].movable) {
      children[i].swap(*arguments[i].text);
    }
  }
}

/// The buffer of an argument's text that is let go serves for the text around it.
inline std::string TermTextWalk::take_longest_buffer(Texts& children) const noexcept {
  std::string buffer;
  if (inline_texts_ == InlineTexts::release) {
    for (std::string& text : children) {
      if (text.capacity() > buffer.capacity()) {
        buffer.swap(text);
      }
    }
  }
  return buffer;
}

/// Enters `term`, which was looked for and not found, with its whole text.
inline std::string* TermTextWalk::keep(const Term* term, std::string&& text) {
  return &defs_.insert_absent(term, std::move(text))->second;
}

template <class WriteText>
std::string TermTextWalk::write_definition(const Term* term, const WriteText& write_text) {
  std::string label;
  printer_.get_define_label(term, label);
  printer_.print_define_start(out_, label, term);
  write_text();
  printer_.print_define_end(out_, term);
  return label;
}

inline TermTextWalk::Argument TermTextWalk::define(const Term* term, const Texts& children) {
  std::string label =
      write_definition(term, [&] { printer_.print_term_and_children(out_, term, children); });
  return {keep(term, std::move(label)), 0, false};
}

TermTextWalk::Argument TermTextWalk::write_inline(const Term* term, std::size_t levels,
                                                  Texts& children) {
  inline_text_.clear_text();
  printer_.print_term_and_children(inline_text_, term, children);
  const std::string_view written = inline_text_.text();
  if (rule_.exceeds_bytes(written.size())) {
    std::string label = write_definition(term, [&] { write_text(out_, written); });
    return {keep(term, std::move(label)), 0, false};
  }
  std::string text = take_longest_buffer(children);
  text.assign(written);
  return {keep(term, std::move(text)), levels, true};
}

TermTextWalk::Argument TermTextWalk::write_leaf(const Term* term) {
  inline_text_.clear_text();
  printer_.print_term_and_children(inline_text_, term, texts_for(0));
  std::string text(inline_text_.text());
  return {keep(term, std::move(text)), 0, false};
}

inline TermTextWalk::Argument TermTextWalk::handle(const Term* term, const Argument* arguments,
                                                   Texts& children) {
  std::size_t levels = 1;
  for (std::size_t i = 0; i < children.size(); ++i) {
    levels = std::max(levels, arguments[i].levels + 1);
  }
  if (rule_.is_shared(term) || (term != root_ && rule_.exceeds_levels(levels))) {
    return define(term, children);
  }
  return write_inline(term, levels, children);
}

/// True when `term` cannot have been handled, as nothing else in the texts of this map refers to
/// it. Spares most look-ups.
inline bool TermTextWalk::is_first_reference(const Term* term) const {
  return inline_texts_ == InlineTexts::release && term->symbol->arity != 0 &&
         !rule_.is_shared(term);
}

inline bool TermTextWalk::enter(const Term* term) {
  if (is_first_reference(term)) {
    return true;
  }
  const auto known = defs_.find(term);
  if (known != defs_.end()) {
    arguments_.push_back({&known->second, 0, false});
    return false;
  }
  if (term->symbol->arity == 0) {
    arguments_.push_back(write_leaf(term));
    return false;
  }
  return true;
}

inline void TermTextWalk::leave(const Term* term) {
  const std::size_t count = term->symbol->arity;
  const std::size_t around = arguments_.size() - count;
  const Argument* const arguments = arguments_.data() + around;
  Texts& children = texts_for(count);
  lend_texts(arguments, children);
  Argument result{};
  {
    const ScopeExit give_back([&] { take_texts_back(arguments, children); });
    result = handle(term, arguments, children);
  }
  arguments_.resize(around + 1);
  arguments_.back() = result;
}

const std::string& TermTextWalk::run(const Term* term) {
  root_ = term;
  arguments_.clear();
  walk_.run(
      term, [this](const Term* visited) { return enter(visited); },
      [this](const Term* visited) { leave(visited); });
  return *arguments_.back().text;
}

}  // namespace brum
