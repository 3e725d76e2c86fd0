#include "processes.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>
#include <vector>

#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "io_error.h"

namespace brum::tools {

namespace {

/// A process that runs.
struct Running {
  std::size_t task;
  pid_t id;
  int messages;  // the end of a pipe that its standard error is read from
  std::string text;
};

[[noreturn]] void refuse(const char* what) {
  throw IoError(std::string("cannot start a process: ") + what + ": " +
                std::generic_category().message(errno));
}

/// What the child does: it never comes back.
[[noreturn]] void become_task(std::size_t number, const std::function<int(std::size_t)>& task,
                              pid_t parent, int messages) noexcept {
#ifdef __linux__
  // Whoever ends the command alone means its processes, too.
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (::getppid() != parent) {
    ::_exit(EXIT_FAILURE);
  }
#else
  static_cast<void>(parent);
#endif
  ::dup2(messages, STDERR_FILENO);
  ::close(messages);
  ::_exit(task(number));
}

/// Gives nothing but an id of 0 when the system has no process or pipe left.
Running start(std::size_t number, const std::function<int(std::size_t)>& task) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return {number, 0, -1, {}};
  }
  const pid_t parent = ::getpid();
  const pid_t id = ::fork();
  if (id == 0) {
    ::close(ends[0]);
    become_task(number, task, parent, ends[1]);
  }
  const int why = errno;
  ::close(ends[1]);
  if (id < 0) {
    ::close(ends[0]);
    errno = why;
    return {number, 0, -1, {}};
  }
  return {number, id, ends[0], {}};
}

/// Takes what there is to read; gives whether there may be more.
bool read_messages(Running& process) {
  std::array<char, 4096> block{};
  const ssize_t got = ::read(process.messages, block.data(), block.size());
  if (got > 0) {
    process.text.append(block.data(), static_cast<std::size_t>(got));
  }
  return got > 0 || (got < 0 && errno == EINTR);
}

ProcessEnd wait_for(Running& process) {
  ::close(process.messages);
  int how = 0;
  while (::waitpid(process.id, &how, 0) < 0 && errno == EINTR) {
  }
  ProcessEnd end;
  end.status = WIFEXITED(how) ? WEXITSTATUS(how) : 0;
  end.signal = WIFSIGNALED(how) ? WTERMSIG(how) : 0;
  end.messages = std::move(process.text);
  return end;
}

/// Waits until one of the processes has something to say or has ended, a tenth of a second at most.
std::vector<pollfd> wait_for_messages(const std::vector<Running>& running) {
  constexpr int tenth_of_a_second = 100;  // milliseconds
  std::vector<pollfd> ends;
  ends.reserve(running.size());
  for (const Running& process : running) {
    ends.push_back({process.messages, POLLIN, 0});
  }
  if (::poll(ends.data(), ends.size(), tenth_of_a_second) < 0) {
    for (pollfd& end : ends) {
      end.revents = 0;
    }
  }
  return ends;
}

}  // namespace

void run_in_processes(std::size_t count, std::size_t most,
                      const std::function<int(std::size_t)>& task,
                      const std::function<void(std::size_t, const ProcessEnd&)>& on_end,
                      const std::function<void()>& on_wait) {
  std::vector<Running> running;
  std::size_t next = 0;
  while (next < count || !running.empty()) {
    while (next < count && running.size() < most) {
      Running process = start(next, task);
      if (process.id == 0) {
        if (running.empty()) {
          refuse("fork");
        }
        break;  // there will be room when another one has ended
      }
      running.push_back(std::move(process));
      ++next;
    }
    const std::vector<pollfd> ends = wait_for_messages(running);
    std::vector<Running> still_running;
    for (std::size_t i = 0; i < running.size(); ++i) {
      if (ends[i].revents == 0 || read_messages(running[i])) {
        still_running.push_back(std::move(running[i]));
      } else {
        const std::size_t number = running[i].task;
        on_end(number, wait_for(running[i]));
      }
    }
    running = std::move(still_running);
    on_wait();
  }
}

}  // namespace brum::tools
