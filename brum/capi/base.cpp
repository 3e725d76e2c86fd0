#include "brum/capi/base.h"

#include <new>

#include "brum/capi/handles.h"

brum_manager* brum_manager_new() noexcept {
  try {
    return new brum_manager();
  } catch (...) {
    return nullptr;
  }
}

void brum_manager_free(brum_manager* manager) noexcept {
  delete manager;
}

brum_status brum_last_error(const brum_manager* manager) noexcept {
  return manager == nullptr ? BRUM_ERROR_NULL : manager->errors.status();
}

const char* brum_last_error_text(const brum_manager* manager) noexcept {
  return manager == nullptr ? "the manager is null" : manager->errors.text();
}

void brum_clear_error(brum_manager* manager) noexcept {
  if (manager != nullptr) {
    manager->errors.clear();
  }
}

size_t brum_num_terms(const brum_manager* manager) noexcept {
  return manager == nullptr ? 0 : manager->terms.num_terms();
}

const char* brum_version() noexcept {
  return BRUM_VERSION;
}

brum_buffer* brum_buffer_new() noexcept {
  return new (std::nothrow) brum_buffer();
}

void brum_buffer_free(brum_buffer* buffer) noexcept {
  delete buffer;
}

const char* brum_buffer_text(const brum_buffer* buffer) noexcept {
  return buffer == nullptr ? "" : buffer->text.c_str();
}

size_t brum_buffer_size(const brum_buffer* buffer) noexcept {
  return buffer == nullptr ? 0 : buffer->text.size();
}

void brum_buffer_clear(brum_buffer* buffer) noexcept {
  if (buffer != nullptr) {
    buffer->text.clear();
  }
}
