#include "brum/terms/data_type.h"
#include "brum/utils/concat.h"

#include <limits>
#include <vector>

namespace brum {

namespace {

/// A composite sort whose components are being written.
struct OpenSort {
  const DataType* sort;
  std::size_t written;
};

/// The order in which a composite sort shows its components: a function type ends with its result.
const DataType* shown_component(const DataType* sort, std::size_t position) {
  if (sort->kind() != DataType::Kind::function) {
    return sort->get_component(position);
  }
  const bool is_result = position + 1 == sort->num_components();
  return sort->get_component(is_result ? 0 : position + 1);
}

}  // namespace

std::string DataType::to_str() const {
  return to_str(std::numeric_limits<std::size_t>::max());
}

std::string DataType::to_short_str() const {
  return to_str(std::size_t{64} * 1024);
}

/// Stops with " ..." once the text is longer than `limit` bytes and not at its end.
std::string DataType::to_str(std::size_t limit) const {
  std::string text;
  std::vector<OpenSort> open;
  const DataType* next = this;
  for (;;) {
    switch (next->kind_) {
      case Kind::boolean:
        text += "Bool";
        break;
      case Kind::integer:
        text += "Int";
        break;
      case Kind::real:
        text += "Real";
        break;
      case Kind::bit_vector:
        text += concat({"(_ BitVec ", std::to_string(next->width_), ")"});
        break;
      case Kind::uninterpreted:
        text += next->name_;
        break;
      case Kind::array:
        text += "(Array";
        open.push_back({next, 0});
        break;
      case Kind::function:
        text += "(->";
        open.push_back({next, 0});
        break;
    }
    while (!open.empty() && open.back().written == open.back().sort->num_components()) {
      text += ')';
      open.pop_back();
    }
    if (open.empty()) {
      return text;
    }
    if (text.size() > limit) {
      return text += " ...";
    }
    text += ' ';
    next = shown_component(open.back().sort, open.back().written);
    ++open.back().written;
  }
}

}  // namespace brum
