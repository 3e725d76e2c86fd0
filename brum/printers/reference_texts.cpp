#include "brum/printers/reference_texts.h"

#include <algorithm>

namespace brum {

namespace {
/// Ids are the keys of slots, so that no two slots have the same.
constexpr auto is_any = [](const void* /*slot*/) { return true; };
}  // namespace

[[gnu::noinline]] ReferenceTexts::Slot* ReferenceTexts::make_page() {
  constexpr std::size_t page_bytes = page_size * sizeof(Slot);
  if (chunks_.empty() || used_bytes_ == chunks_.back().size()) {
    const std::size_t bytes =
        chunks_.empty() ? page_bytes : std::min(chunks_.back().size() * 2, huge_page_bytes);
    chunks_.push_back(LargeBlock(bytes));
    used_bytes_ = 0;
  }
  Slot* const page = reinterpret_cast<Slot*>(chunks_.back().begin() + used_bytes_);
  used_bytes_ += page_bytes;
  return page;
}

[[gnu::noinline]] ReferenceTexts::Slot& ReferenceTexts::add_scattered(const Term* term) {
  return *scattered_.get(term->id, is_any, [&] {
    if (next_scattered_ == end_of_scattered_) {
      next_scattered_ = make_page();
      end_of_scattered_ = next_scattered_ + page_size;
    }
    return next_scattered_++;
  });
}

[[gnu::noinline]] const ReferenceTexts::Slot& ReferenceTexts::find_scattered(
    const Term* term) const {
  Slot* const* const slot = scattered_.find(term->id, is_any);
  assert(slot != nullptr);
  return **slot;
}

[[gnu::noinline]] void ReferenceTexts::insert_long(Slot& slot, std::string_view text) {
  const std::size_t size = text.size();
  char* const place = static_cast<char*>(long_texts_.allocate(sizeof(size) + size));
  std::memcpy(place, &size, sizeof(size));
  std::memcpy(place + sizeof(size), text.data(), size);
  std::memcpy(slot.bytes.data(), &place, sizeof(place));
  slot.size = elsewhere;
}

std::string_view ReferenceTexts::long_text(const Slot& slot) {
  const char* place = nullptr;
  std::memcpy(&place, slot.bytes.data(), sizeof(place));
  std::size_t size = 0;
  std::memcpy(&size, place, sizeof(size));
  return {place + sizeof(size), size};
}

}  // namespace brum
