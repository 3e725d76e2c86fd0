#include "bench/worker.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <exception>
#include <limits>
#include <utility>

namespace brum::bench {

namespace {

double processor_seconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The number that asks a worker to end.
constexpr std::size_t end_of_work = std::numeric_limits<std::size_t>::max();

/// Both are for values that a socket passes on in one piece; false when nobody is at its other end.
template <class Value>
bool send_value(int socket, const Value& value) {
  return send(socket, &value, sizeof(value), MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof(value));
}
template <class Value>
bool receive_value(int socket, Value& value) {
  return recv(socket, &value, sizeof(value), 0) == static_cast<ssize_t>(sizeof(value));
}

Worker::Outcome do_job(const Worker::Job& job) {
  if (job.prepare) {
    job.prepare();
  }
  const double begin = processor_seconds();
  const std::uint64_t value = job.work();
  return {value, processor_seconds() - begin};
}

/// Does in the child what it is asked to; gives the status to end with.
int serve(const std::vector<Worker::Job>& jobs, int socket) {
  try {
    std::size_t number = 0;
    while (receive_value(socket, number) && number != end_of_work) {
      if (!send_value(socket, do_job(jobs[number]))) {
        return 1;
      }
    }
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}

}  // namespace

Worker::~Worker() {
  stop();
}

std::size_t Worker::add(Job job) {
  jobs_.push_back(std::move(job));
  return jobs_.size() - 1;
}

bool Worker::start() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0) {
    return false;
  }
  process_ = fork();
  if (process_ == 0) {
    close(ends[0]);
    _exit(serve(jobs_, ends[1]));
  }
  close(ends[1]);
  socket_ = ends[0];
  return process_ > 0;
}

void Worker::stop() noexcept {
  if (socket_ >= 0) {
    send_value(socket_, end_of_work);
    close(socket_);
    socket_ = -1;
  }
  if (process_ > 0) {
    waitpid(process_, nullptr, 0);
  }
  process_ = -1;
}

std::optional<Worker::Outcome> Worker::run(std::size_t number) {
  if (process_ == 0 && !start()) {
    stop();
  }
  Outcome outcome{};
  if (process_ > 0 && send_value(socket_, number) && receive_value(socket_, outcome)) {
    return outcome;
  }
  stop();
  return std::nullopt;
}

bool succeeds_in_child(const std::function<void()>& work) {
  Worker worker;
  const std::size_t number = worker.add({nullptr, [&] {
                                           work();
                                           return std::uint64_t{0};
                                         }});
  return worker.run(number).has_value();
}

}  // namespace brum::bench
