#include <new>
#include <stdexcept>

#include "brum/capi/handles.h"
#include "brum/printers/term_printer.h"

namespace brum::capi {

namespace {

/// What is said of an error whose own text there was no memory for.
const char* fixed_text(brum_status status) noexcept {
  switch (status) {
    case BRUM_OK:
      return "";
    case BRUM_ERROR_NULL:
      return "a handle is null";
    case BRUM_ERROR_SORT:
      return "the sorts do not fit";
    case BRUM_ERROR_ARGUMENT:
      return "an argument is wrong";
    case BRUM_ERROR_FORM:
      return "the form cannot express the term";
    case BRUM_ERROR_OUTPUT:
      return "the sink took no more text";
    case BRUM_ERROR_MEMORY:
      return "out of memory";
    case BRUM_ERROR_INTERNAL:
      break;
  }
  return "internal error";
}

/// Gives the status of the exception being handled and hands its text to `take`.
template <class Take>
brum_status classify(const Take& take) noexcept {
  try {
    throw;
  } catch (const NullArgument& error) {
    take(BRUM_ERROR_NULL, error.what());
    return BRUM_ERROR_NULL;
  } catch (const SinkFailure& error) {
    take(BRUM_ERROR_OUTPUT, error.what());
    return BRUM_ERROR_OUTPUT;
  } catch (const TermManager::error& error) {
    take(BRUM_ERROR_SORT, error.what());
    return BRUM_ERROR_SORT;
  } catch (const TermPrinter::error& error) {
    take(BRUM_ERROR_FORM, error.what());
    return BRUM_ERROR_FORM;
  } catch (const UnfitForm& error) {
    take(BRUM_ERROR_FORM, error.what());
    return BRUM_ERROR_FORM;
  } catch (const Exception& error) {
    take(BRUM_ERROR_ARGUMENT, error.what());
    return BRUM_ERROR_ARGUMENT;
  } catch (const std::bad_alloc&) {
    take(BRUM_ERROR_MEMORY, "");
    return BRUM_ERROR_MEMORY;
  } catch (const std::length_error&) {  // more elements than memory can hold
    take(BRUM_ERROR_MEMORY, "");
    return BRUM_ERROR_MEMORY;
  } catch (const std::exception& error) {
    take(BRUM_ERROR_INTERNAL, error.what());
    return BRUM_ERROR_INTERNAL;
  } catch (...) {
    take(BRUM_ERROR_INTERNAL, "");
    return BRUM_ERROR_INTERNAL;
  }
}

}  // namespace

brum_status status_of_current() noexcept {
  return classify([](brum_status /*status*/, const char* /*text*/) {});
}

brum_status ErrorState::keep_current() noexcept {
  return classify([this](brum_status status, const char* text) { keep(status, text); });
}

void ErrorState::keep(brum_status status, const char* text) noexcept {
  if (status_ != BRUM_OK) {
    return;
  }
  status_ = status;
  try {
    text_ = text;
  } catch (const std::exception&) {
    text_.clear();  // text() has one for each status
  }
}

const char* ErrorState::text() const noexcept {
  return text_.empty() ? fixed_text(status_) : text_.c_str();
}

void ErrorState::clear() noexcept {
  status_ = BRUM_OK;
  text_.clear();
}

}  // namespace brum::capi
