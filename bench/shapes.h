#ifndef BRUM_BENCH_SHAPES_H
#define BRUM_BENCH_SHAPES_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "bench/random.h"

namespace brum::bench {

/// The formulas that are timed. Every one is built by the same code in every system, from a number
/// of binary nodes.
enum class Shape {
  /// A left-nested conjunction of (<= v w), each pair of variables once. Half of the nodes are
  /// conjunctions.
  chain,
  /// t = t + t, again and again.
  ladder,
  /// A balanced sum of variables, each used once.
  tree,
  /// Sums whose arguments are chosen at random among the last 1000 sums. About a fifth of what is
  /// built is not part of the formula.
  dag,
  /// As dag, over bit-vectors of 32 bits: additions, exclusive ors, halves put together anew,
  /// products with constants.
  bit_vectors,
};

struct NamedShape {
  Shape shape;
  std::string_view name;
};

inline constexpr std::array<NamedShape, 5> shapes = {{{Shape::chain, "chain"},
                                                      {Shape::ladder, "ladder"},
                                                      {Shape::tree, "tree"},
                                                      {Shape::dag, "dag"},
                                                      {Shape::bit_vectors, "bit-vectors"}}};

/// The logic in which a shape is stated.
inline const char* logic_of(Shape shape) {
  return shape == Shape::bit_vectors ? "QF_BV" : "QF_LIA";
}

/// Builds shapes in one system, which has a type `Term` and the operations used below.
template <class System>
class ShapeBuilder {
 public:
  using Term = typename System::Term;

  explicit ShapeBuilder(System& system) : system_(system) {}

  /// Builds the formula of this shape with `nodes` binary nodes, at least 2.
  Term build(Shape shape, std::size_t nodes) {
    switch (shape) {
      case Shape::chain:
        return chain(nodes);
      case Shape::ladder:
        return ladder(nodes);
      case Shape::tree:
        return tree(nodes);
      case Shape::dag:
        return dag(nodes);
      case Shape::bit_vectors:
        return bit_vectors(nodes);
    }
    return {};
  }

 private:
  static constexpr std::size_t num_variables = 1000;
  static constexpr std::size_t window = 1000;

  Term int_variable(std::size_t number) {
    return system_.int_variable("v" + std::to_string(number));
  }

  Term chain(std::size_t nodes) {
    const std::size_t atoms = nodes / 2;
    const auto root = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(atoms))));
    const std::size_t count = std::max(num_variables, root);
    std::vector<Term> variables;
    for (std::size_t i = 0; i < count; ++i) {
      variables.push_back(int_variable(i));
    }
    Term all = system_.leq(variables[0], variables[0]);
    for (std::size_t i = 1; i < atoms; ++i) {
      all = system_.conjunction(all, system_.leq(variables[i % count], variables[i / count]));
    }
    return all;
  }

  Term ladder(std::size_t nodes) {
    const Term variable = int_variable(0);
    Term sum = variable;
    for (std::size_t i = 0; i < nodes; ++i) {
      sum = system_.plus(sum, sum);
    }
    return system_.leq(sum, variable);
  }

  Term tree(std::size_t nodes) {
    std::vector<Term> level;
    for (std::size_t i = 0; i <= nodes; ++i) {
      level.push_back(int_variable(i));
    }
    while (level.size() > 1) {
      std::vector<Term> next;
      for (std::size_t i = 0; i + 1 < level.size(); i += 2) {
        next.push_back(system_.plus(level[i], level[i + 1]));
      }
      if (level.size() % 2 == 1) {
        next.push_back(level.back());
      }
      level.swap(next);
    }
    return system_.leq(level[0], int_variable(nodes + 1));
  }

  Term dag(std::size_t nodes) {
    std::vector<Term> terms;
    for (std::size_t i = 0; i < num_variables; ++i) {
      terms.push_back(int_variable(i));
    }
    const Term first = terms[0];
    for (std::size_t i = 0; i < nodes; ++i) {
      const Term left = recent(terms);
      const Term right = recent(terms);
      terms.push_back(system_.plus(left, right));
    }
    return system_.leq(terms.back(), first);
  }

  Term bit_vectors(std::size_t nodes) {
    std::vector<Term> terms;
    for (std::size_t i = 0; i < num_variables; ++i) {
      terms.push_back(system_.bv_variable("w" + std::to_string(i)));
    }
    const Term first = terms[0];
    for (std::size_t i = 0; i < nodes; ++i) {
      terms.push_back(bit_vector_step(terms));
    }
    return system_.equal(terms.back(), first);
  }

  Term bit_vector_step(const std::vector<Term>& terms) {
    const Term left = recent(terms);
    const Term right = recent(terms);
    switch (random_.below(4)) {
      case 0:
        return system_.bv_add(left, right);
      case 1:
        return system_.bv_xor(left, right);
      case 2:
        return system_.concat(system_.extract(15, 0, left), system_.extract(31, 16, right));
      default:
        return system_.bv_mul(left, system_.bv_number(random_.below(65536)));
    }
  }

  Term recent(const std::vector<Term>& terms) {
    return terms[terms.size() - 1 - random_.below(window)];
  }

  System& system_;
  Random random_;
};

}  // namespace brum::bench

#endif  // BRUM_BENCH_SHAPES_H
