#ifndef BRUM_READERS_DEFINITIONS_H
#define BRUM_READERS_DEFINITIONS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "brum/readers/side_conditions.h"
#include "brum/readers/term_builder.h"
#include "brum/readers/value.h"
#include "brum/terms/arena.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// A function defined in the input.
struct Definition {
  std::uint64_t number = 0;  // no two definitions of one expander have the same
  std::vector<const DataType*> parameter_sorts;
  const DataType* result_sort = nullptr;
  Value body;
  bool depends_on_parameters = false;  // or holds an operator whose building waits for arguments
  SideConditions::Node conditions = SideConditions::none;
};

/// Makes definitions and applies them.
///
/// An application costs one step for each subterm of the body that depends on a parameter, and
/// nothing when the same definition was applied to the same arguments before, or within a
/// definition to its own parameters in their order; so definitions that use one another twice, many
/// deep, stay cheap.
class Definitions {
 public:
  explicit Definitions(TermBuilder& builder) : builder_(builder) {}
  Definitions(const Definitions&) = delete;
  Definitions& operator=(const Definitions&) = delete;

  /// The term that stands for parameter `index` (from 0) of this sort in the body of a definition.
  const Term* parameter(std::size_t index, const DataType* sort);

  /// Makes a definition of a body that was built while the partial operators were deferring.
  /// `conditions` is what the body relies on. The body's sort must fit `result_sort`.
  Definition define(std::vector<const DataType*> parameter_sorts, const DataType* result_sort,
                    Value body, SideConditions::Node conditions);

  /// Gives the body with the arguments in the places of the parameters. Checks number and sorts of
  /// the arguments; throws TermManager::error `found …, expected …`.
  Value apply(const Definition& definition, std::string_view name,
              std::span<const Value> arguments);

 private:
  struct Application {
    std::uint64_t definition;
    std::span<const Term* const> arguments;
    bool deferring;
    bool operator==(const Application& other) const;
  };
  struct HashApplication {
    std::uint64_t operator()(const Application& application) const;
  };
  /// What an application builds anew: the subterms of the body that depend on a parameter, in an
  /// order in which arguments come first.
  struct Plan {
    /// An argument of a step: a term that stays, or what is in this slot. Slots hold the arguments
    /// of the application and after them the result of each step.
    struct Operand {
      const Term* fixed;
      std::uint32_t slot;
    };
    struct Step {
      const Symbol* symbol;
      std::uint32_t first_operand;
      bool is_deferred;
    };
    std::vector<Step> steps;
    std::vector<Operand> operands;
    Operand result{nullptr, 0};
  };
  struct Result {
    Value value;
    SideConditions::Node conditions = SideConditions::none;
  };

  bool is_open(const Term* term);
  Plan make_plan(const Definition& definition);
  const Plan& plan_of(const Definition& definition);
  void check(const Definition& definition, std::string_view name,
             std::span<const Value> arguments) const;
  bool is_own_body(const Definition& definition);
  Value build(const Definition& definition);

  TermBuilder& builder_;
  Arena arena_;
  hsh::HashMap<const Term*, bool> is_open_;
  hsh::HashMap<const Symbol*, std::uint32_t> parameter_indices_;
  hsh::HashMap<Application, Result, HashApplication> results_;
  // By the number of a definition. Made when it is first applied: many definitions only serve
  // others.
  hsh::HashMap<std::uint64_t, std::unique_ptr<const Plan>> plans_;
  std::vector<const Term*> arguments_;  // of the application being built
  std::vector<const Term*> slots_;
  std::vector<const Term*> children_;
  std::uint64_t last_number_ = 0;
  std::uint64_t first_open_id_ = ~std::uint64_t{0};  // every term with a lower id is closed
};

}  // namespace brum

#endif  // BRUM_READERS_DEFINITIONS_H
