#include "brum/printers/reserve_text.h"

#include <cstdint>
#include <exception>
#include <ios>
#include <sstream>
#include <streambuf>
#include <string>
#include <typeinfo>
#include <utility>

#include "brum/printers/write_text.h"

namespace brum {

namespace {
// Stream buffers copy the string of one pointer, they neither take it over nor give it away.
constexpr bool strings_move = sizeof(std::string) != sizeof(char*);

/// Whether the buffer has no memory for what is written yet, or only that of its string for a short
/// text, inside the object.
bool has_no_memory_outside(const std::streambuf& buffer) {
  const auto place = reinterpret_cast<std::uintptr_t>(PutArea::begin(buffer));
  const auto object = reinterpret_cast<std::uintptr_t>(&buffer);
  return place == 0 || (place >= object && place - object < sizeof(std::stringbuf));
}
}  // namespace

void reserve_text(std::ostream& out, std::size_t bytes) noexcept {
  std::streambuf* const buffer = out.rdbuf();
  if (!strings_move || buffer == nullptr || typeid(*buffer) != typeid(std::stringbuf) ||
      PutArea::room_for(*buffer, bytes) != nullptr || !has_no_memory_outside(*buffer)) {
    return;
  }
  auto& kept = static_cast<std::stringbuf&>(*buffer);
  const std::streampos before = kept.pubseekoff(0, std::ios_base::cur, std::ios_base::out);
  const std::streampos end = kept.pubseekoff(0, std::ios_base::end, std::ios_base::out);
  if (before == std::streampos(-1)) {
    return;  // nothing can be written
  }
  if (before != end) {
    kept.pubseekpos(before, std::ios_base::out);
    return;
  }
  const std::streampos read = kept.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
  std::string text = kept.str();  // short: takes no memory
  try {
    text.reserve(text.size() + bytes);
  } catch (const std::exception&) {
    return;  // the stream takes memory as it needs it, then
  }
  kept.str(std::move(text));
  kept.pubseekoff(0, std::ios_base::end, std::ios_base::out);
  kept.pubseekpos(read, std::ios_base::in);  // does nothing to one that is not read
}

}  // namespace brum
