#ifndef BRUM_CAPI_HANDLES_H
#define BRUM_CAPI_HANDLES_H

// What the handles of the C interface are, and how its functions keep exceptions in. Not part of
// the interface.

#include <exception>
#include <string>

#include "brum/capi/base.h"
#include "brum/capi/sorts.h"
#include "brum/capi/terms.h"
#include "brum/terms/term_manager.h"

namespace brum::capi {

/// Thrown for a null handle or pointer; `what` names the argument and lives for ever.
class NullArgument : public std::exception {
 public:
  explicit NullArgument(const char* what) : what_(what) {}
  const char* what() const noexcept override { return what_; }

 private:
  const char* what_;
};

/// Thrown when a sink takes no more text.
class SinkFailure : public std::exception {
 public:
  /// `text` must outlive the object: a literal.
  explicit SinkFailure(const char* text = "the sink took no more text") : text_(text) {}

  const char* what() const noexcept override { return text_; }

 private:
  const char* text_;
};

/// Thrown for a form that cannot say what it is to say, apart from what the printers find.
class UnfitForm : public Exception {
 public:
  explicit UnfitForm(const std::string& msg) : Exception(msg) {}
};

/// The first error since the last clear().
class ErrorState {
 public:
  /// Takes the exception being handled, if there is no error yet; gives its status.
  brum_status keep_current() noexcept;

  brum_status status() const noexcept { return status_; }
  const char* text() const noexcept;
  void clear() noexcept;

 private:
  void keep(brum_status status, const char* text) noexcept;

  brum_status status_ = BRUM_OK;
  std::string text_;  // empty without an error, and where there was no memory for it
};

/// Gives the status that belongs to the exception being handled.
brum_status status_of_current() noexcept;

}  // namespace brum::capi

struct brum_manager {
  brum::TermManager terms;
  brum::capi::ErrorState errors;
};

struct brum_buffer {
  std::string text;
};

namespace brum::capi {

// Handles of what a manager owns are the addresses of its objects.

inline const brum_sort* handle(const DataType* sort) {
  return reinterpret_cast<const brum_sort*>(sort);
}
inline const brum_symbol* handle(const Symbol* symbol) {
  return reinterpret_cast<const brum_symbol*>(symbol);
}
inline const brum_term* handle(const Term* term) {
  return reinterpret_cast<const brum_term*>(term);
}
inline const DataType* object(const brum_sort* sort) {
  return reinterpret_cast<const DataType*>(sort);
}
inline const Symbol* object(const brum_symbol* symbol) {
  return reinterpret_cast<const Symbol*>(symbol);
}
inline const Term* object(const brum_term* term) {
  return reinterpret_cast<const Term*>(term);
}

/// Gives the object behind a handle. Throws NullArgument for null.
inline const DataType* require(const brum_sort* sort) {
  if (sort == nullptr) {
    throw NullArgument("the sort is null");
  }
  return object(sort);
}
inline const Symbol* require(const brum_symbol* symbol) {
  if (symbol == nullptr) {
    throw NullArgument("the symbol is null");
  }
  return object(symbol);
}
inline const Term* require(const brum_term* term) {
  if (term == nullptr) {
    throw NullArgument("the term is null");
  }
  return object(term);
}
inline const char* require(const char* text) {
  if (text == nullptr) {
    throw NullArgument("the text is null");
  }
  return text;
}

/// Gives the objects behind an array of handles, none of them null. The array may be null when
/// `count` is 0.
template <class Object, class Handle>
std::vector<const Object*> require_all(const Handle* const* handles, std::size_t count) {
  if (handles == nullptr && count != 0) {
    throw NullArgument("the array is null");
  }
  std::vector<const Object*> objects;
  objects.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    objects.push_back(require(handles[i]));
  }
  return objects;
}

/// Gives the handle of what `make` makes from the manager's store; null, after keeping the error,
/// when it throws.
template <class Make>
auto build(brum_manager* manager, const Make& make) noexcept
    -> decltype(handle(make(manager->terms))) {
  if (manager == nullptr) {
    return nullptr;
  }
  try {
    return handle(make(manager->terms));
  } catch (...) {
    manager->errors.keep_current();
    return nullptr;
  }
}

/// Runs `act`; gives BRUM_OK, or the status of what it throws, after keeping the error.
template <class Act>
brum_status perform(brum_manager* manager, const Act& act) noexcept {
  if (manager == nullptr) {
    return BRUM_ERROR_NULL;
  }
  try {
    act();
    return BRUM_OK;
  } catch (...) {
    return manager->errors.keep_current();
  }
}

/// The same where no manager is at hand to keep the error.
template <class Act>
brum_status perform(const Act& act) noexcept {
  try {
    act();
    return BRUM_OK;
  } catch (...) {
    return status_of_current();
  }
}

}  // namespace brum::capi

#endif  // BRUM_CAPI_HANDLES_H
