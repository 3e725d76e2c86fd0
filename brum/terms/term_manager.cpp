#include "brum/terms/term_manager.h"

#include <vector>

#include "brum/terms/sort_checks.h"

namespace brum {

namespace {

using Kind = DataType::Kind;

void require_component_sort(std::string_view builder, const DataType* sort) {
  if (sort == nullptr) {
    throw TermManager::error(std::string(builder) + ": a sort is null");
  }
  if (sort->kind() == Kind::function) {
    throw TermManager::error(std::string(builder) + ": " + sort->to_short_str() +
                             " is a function type, expected a sort of terms");
  }
}

void require_no_bool(std::string_view builder, const DataType* sort) {
  require_component_sort(builder, sort);
  if (sort->kind() == Kind::boolean) {
    throw TermManager::error(std::string(builder) + ": there is no such symbol over Bool");
  }
}

void require_name(std::string_view builder, const std::string& name) {
  if (name.find('\0') != std::string::npos) {
    throw TermManager::error(std::string(builder) + ": the name holds a NUL byte");
  }
}

/// Forgets the terms made during its life, unless keep() was called.
class TermTransaction {
 public:
  explicit TermTransaction(TermStore& terms) : terms_(terms), old_size_(terms.size()) {}
  TermTransaction(const TermTransaction&) = delete;
  TermTransaction& operator=(const TermTransaction&) = delete;
  ~TermTransaction() {
    if (!kept_) {
      terms_.roll_back(old_size_);
    }
  }

  void keep() { kept_ = true; }

 private:
  TermStore& terms_;
  std::size_t old_size_;
  bool kept_ = false;
};

}  // namespace

TermManager::TermManager()
    : arena_(Arena::Placement::reproducible),
      sorts_(arena_),
      factory_(arena_, sorts_),
      operators_(factory_, sorts_),
      numerals_(factory_, sorts_),
      terms_(sorts_),
      true_(make_operator("true", get_bool_type(), {})),
      false_(make_operator("false", get_bool_type(), {})),
      and_(make_operator("and", get_bool_type(), {get_bool_type(), get_bool_type()})),
      or_(make_operator("or", get_bool_type(), {get_bool_type(), get_bool_type()})),
      not_(make_operator("not", get_bool_type(), {get_bool_type()})),
      iff_(make_operator("iff", get_bool_type(), {get_bool_type(), get_bool_type()})),
      int_plus_(make_operator("+", get_int_type(), {get_int_type(), get_int_type()})),
      real_plus_(make_operator("+", get_real_type(), {get_real_type(), get_real_type()})),
      int_times_(make_operator("*", get_int_type(), {get_int_type(), get_int_type()})),
      real_times_(make_operator("*", get_real_type(), {get_real_type(), get_real_type()})),
      int_leq_(make_operator("<=", get_bool_type(), {get_int_type(), get_int_type()})),
      real_leq_(make_operator("<=", get_bool_type(), {get_real_type(), get_real_type()})),
      floor_(make_operator("to_int", get_int_type(), {get_real_type()})) {}

const Symbol* TermManager::make_operator(std::string_view name, const DataType* result,
                                         std::initializer_list<const DataType*> arguments) {
  if (arguments.size() == 0) {
    return factory_.make_interpreted_symbol(name, result);
  }
  return factory_.make_interpreted_symbol(name, make_function_type(arguments, result));
}

// Sorts.

const DataType* TermManager::make_bv_type(std::size_t width) {
  if (width == 0) {
    throw error("BitVec: a width of 0 bits, expected at least 1");
  }
  return sorts_.bit_vector(width);
}

const DataType* TermManager::make_array_type(const DataType* index, const DataType* element) {
  require_component_sort("Array", index);
  require_component_sort("Array", element);
  return sorts_.array(index, element);
}

const DataType* TermManager::make_uninterpreted_type(const std::string& name) {
  require_name("sort", name);
  return sorts_.uninterpreted(name);
}

const DataType* TermManager::make_function_type(const std::vector<const DataType*>& arguments,
                                                const DataType* result) {
  if (arguments.empty()) {
    throw error("function type: no argument, expected at least one");
  }
  std::vector<const DataType*> components{result};
  components.insert(components.end(), arguments.begin(), arguments.end());
  for (const DataType* component : components) {
    require_component_sort("function type", component);
  }
  return sorts_.function(components);
}

// Symbols.

const Symbol* TermManager::declare(const std::string& name, const DataType* type) {
  return declare_in(signature_, name, type, false);
}

const Symbol* TermManager::declare_interpreted(const std::string& name, const DataType* type) {
  return declare_in(untagged_, name, type, true);
}

const Symbol* TermManager::declare_in(Signature& signature, const std::string& name,
                                      const DataType* type, bool interpreted) {
  require_name("declare", name);
  if (type == nullptr) {
    throw error("declare: the sort of '" + name + "' is null");
  }
  if (const Symbol* known = signature.get_symbol(std::string_view(name)); known != nullptr) {
    if (known->type != type) {
      throw error("declare: '" + name + "' is declared with sort " + known->type->to_short_str() +
                  " already, not " + type->to_short_str());
    }
    return known;
  }
  const Symbol* symbol = interpreted ? factory_.make_interpreted_symbol(name, type)
                                     : factory_.make_user_symbol(name, type);
  signature.add(symbol);
  return symbol;
}

const Symbol* TermManager::get_equality_symbol(const DataType* sort) {
  require_no_bool("=", sort);
  const OperatorKey key{.tag = SymbolTag::equality, .first_sort = sort};
  return operators_.get(key, get_bool_type(), {sort, sort});
}

const Symbol* TermManager::get_ite_symbol(const DataType* sort) {
  require_no_bool("ite", sort);
  const OperatorKey key{.tag = SymbolTag::if_then_else, .first_sort = sort};
  return operators_.get(key, sort, {get_bool_type(), sort, sort});
}

// Terms of every theory.

const Term* TermManager::make_term(const Symbol* symbol, const std::vector<const Term*>& children) {
  if (symbol == nullptr) {
    throw error("term: the symbol is null");
  }
  if (children.size() != symbol->arity) {
    throw error(std::string(symbol->name_view()) + ": " + std::to_string(children.size()) +
                " arguments, expected " + std::to_string(symbol->arity));
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    require_sort(symbol->name_view(), children[i], symbol->type->get_component(i + 1));
  }
  return terms_.apply(symbol, children);
}

const Term* TermManager::apply_connective(std::string_view name, const Symbol* symbol,
                                          std::initializer_list<const Term*> arguments) {
  for (const Term* argument : arguments) {
    require_sort(name, argument, get_bool_type());
  }
  return apply(symbol, arguments);
}

const Term* TermManager::make_true() {
  return apply(true_, {});
}

const Term* TermManager::make_false() {
  return apply(false_, {});
}

const Term* TermManager::make_not(const Term* a) {
  return apply_connective("not", not_, {a});
}

const Term* TermManager::make_and(const Term* a, const Term* b) {
  return apply_connective("and", and_, {a, b});
}

const Term* TermManager::make_or(const Term* a, const Term* b) {
  return apply_connective("or", or_, {a, b});
}

const Term* TermManager::make_iff(const Term* a, const Term* b) {
  return apply_connective("iff", iff_, {a, b});
}

const Term* TermManager::make_equal(const Term* a, const Term* b) {
  require_term("=", a);
  require_term("=", b);
  const DataType* sort = fits(a->sort(), b->sort()) ? b->sort() : a->sort();
  require_sort("=", b, sort);
  if (sort == get_bool_type()) {
    return make_iff(a, b);
  }
  return apply(get_equality_symbol(sort), {a, b});
}

const Term* TermManager::make_ite(const Term* c, const Term* a, const Term* b) {
  require_sort("ite", c, get_bool_type());
  require_term("ite", a);
  require_term("ite", b);
  const DataType* sort = fits(a->sort(), b->sort()) ? b->sort() : a->sort();
  require_sort("ite", b, sort);
  if (sort == get_bool_type()) {
    TermTransaction transaction(terms_);
    const Term* when_true = make_or(make_not(c), a);
    const Term* when_false = make_or(c, b);
    const Term* both = make_and(when_true, when_false);
    transaction.keep();
    return both;
  }
  return apply(get_ite_symbol(sort), {c, a, b});
}

const Term* TermManager::make_select(const Term* array, const Term* index) {
  require_term("select", array);
  const DataType* index_sort = nullptr;
  const DataType* element_sort = nullptr;
  if (!is_array_type(array->sort(), &index_sort, &element_sort)) {
    throw error("select: an argument has sort " + array->sort()->to_short_str() +
                ", expected an array");
  }
  require_sort("select", index, index_sort);
  const OperatorKey key{.tag = SymbolTag::array_select, .first_sort = array->sort()};
  return apply(operators_.get(key, element_sort, {array->sort(), index_sort}), {array, index});
}

const Term* TermManager::make_store(const Term* array, const Term* index, const Term* element) {
  require_term("store", array);
  const DataType* index_sort = nullptr;
  const DataType* element_sort = nullptr;
  if (!is_array_type(array->sort(), &index_sort, &element_sort)) {
    throw error("store: an argument has sort " + array->sort()->to_short_str() +
                ", expected an array");
  }
  require_sort("store", index, index_sort);
  require_sort("store", element, element_sort);
  const OperatorKey key{.tag = SymbolTag::array_store, .first_sort = array->sort()};
  return apply(operators_.get(key, array->sort(), {array->sort(), index_sort, element_sort}),
               {array, index, element});
}

}  // namespace brum
