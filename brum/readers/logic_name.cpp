#include "brum/readers/logic_name.h"

#include <array>
#include <utility>

namespace brum {

namespace {

using Feature = bool LogicFeatures::*;

constexpr std::array<Feature, 12> all_features{
    &LogicFeatures::quantifiers,    &LogicFeatures::arrays,
    &LogicFeatures::functions,      &LogicFeatures::bit_vectors,
    &LogicFeatures::floating_point, &LogicFeatures::data_types,
    &LogicFeatures::strings,        &LogicFeatures::integers,
    &LogicFeatures::reals,          &LogicFeatures::beyond_difference,
    &LogicFeatures::beyond_linear,  &LogicFeatures::transcendental,
};

// A part that begins another one stands behind it.
constexpr std::array<std::pair<std::string_view, Feature>, 7> theory_parts{{
    {"AX", &LogicFeatures::arrays},
    {"A", &LogicFeatures::arrays},
    {"UF", &LogicFeatures::functions},
    {"BV", &LogicFeatures::bit_vectors},
    {"FP", &LogicFeatures::floating_point},
    {"DT", &LogicFeatures::data_types},
    {"S", &LogicFeatures::strings},
}};

/// Reads the arithmetic at the end of a name; false if there is something else.
bool add_arithmetic(std::string_view text, LogicFeatures& features) {
  if (text == "IDL" || text == "RDL") {
    (text == "IDL" ? features.integers : features.reals) = true;
    return true;
  }
  if (text.starts_with('N')) {
    features.beyond_linear = true;
  } else if (!text.starts_with('L')) {
    return false;
  }
  text.remove_prefix(1);
  features.beyond_difference = true;
  features.transcendental = text.ends_with('T');
  if (features.transcendental)
    text.remove_suffix(1);
  features.integers = text == "IA" || text == "IRA";
  features.reals = text == "RA" || text == "IRA";
  return features.integers || features.reals;
}

bool take_theory(std::string_view& text, LogicFeatures& features) {
  for (const auto& [part, feature] : theory_parts) {
    if (text.starts_with(part)) {
      features.*feature = true;
      text.remove_prefix(part.size());
      return true;
    }
  }
  return false;
}

std::string arithmetic_part(const LogicFeatures& features) {
  if (!features.integers && !features.reals)
    return "";
  if (!features.beyond_difference && !features.beyond_linear &&
      features.integers != features.reals) {
    return features.integers ? "IDL" : "RDL";
  }
  std::string part = features.beyond_linear ? "N" : "L";
  if (features.integers)
    part += 'I';
  if (features.reals)
    part += 'R';
  part += 'A';
  if (features.transcendental)
    part += 'T';
  return part;
}

}  // namespace

LogicFeatures join(const LogicFeatures& a, const LogicFeatures& b) {
  LogicFeatures both;
  for (const Feature feature : all_features)
    both.*feature = a.*feature || b.*feature;
  return both;
}

std::optional<LogicFeatures> features_of_logic(std::string_view name) {
  LogicFeatures features;
  features.quantifiers = !name.starts_with("QF_");
  if (!features.quantifiers)
    name.remove_prefix(3);
  if (name.empty())
    return std::nullopt;
  while (!name.empty()) {
    if (add_arithmetic(name, features))
      return features;
    if (!take_theory(name, features))
      return std::nullopt;
  }
  return features;
}

std::string logic_with(const LogicFeatures& features) {
  std::string rest;
  if (features.functions)
    rest += "UF";
  if (features.bit_vectors)
    rest += "BV";
  if (features.floating_point)
    rest += "FP";
  if (features.data_types)
    rest += "DT";
  if (features.strings)
    rest += 'S';
  rest += arithmetic_part(features);
  std::string name = features.quantifiers ? "" : "QF_";
  if (features.arrays)
    name += rest.empty() ? "AX" : "A";
  return name + rest;
}

std::string logic_for(const std::string& name, const LogicFeatures& added) {
  const std::optional<LogicFeatures> stated = features_of_logic(name);
  if (!stated)
    return name;
  LogicFeatures needed = join(*stated, added);
  // A name without arithmetic has nothing to be beyond.
  if (!needed.integers && !needed.reals) {
    needed.beyond_difference = stated->beyond_difference;
    needed.beyond_linear = stated->beyond_linear;
  }
  return needed == *stated ? name : logic_with(needed);
}

bool numerals_are_real(std::string_view logic) {
  const std::optional<LogicFeatures> features = features_of_logic(logic);
  return features && features->reals && !features->integers;
}

}  // namespace brum
