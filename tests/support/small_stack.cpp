#include "tests/support/small_stack.h"

#include <pthread.h>

#include <exception>
#include <stdexcept>

namespace brum::testing {

namespace {

struct Job {
  const std::function<void()>& body;
  std::exception_ptr failure;
};

void* run(void* argument) {
  Job& job = *static_cast<Job*>(argument);
  try {
    job.body();
  } catch (...) {
    job.failure = std::current_exception();
  }
  return nullptr;
}

}  // namespace

void run_on_small_stack(const std::function<void()>& body, std::size_t bytes) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) {
    throw std::runtime_error("no thread attributes");
  }
  Job job{body, nullptr};
  pthread_t thread;
  const bool started = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                       pthread_create(&thread, &attributes, run, &job) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) {
    throw std::runtime_error("no thread with a stack of the wanted size");
  }
  pthread_join(thread, nullptr);
  if (job.failure != nullptr) {
    std::rethrow_exception(job.failure);
  }
}

}  // namespace brum::testing
