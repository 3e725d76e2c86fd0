#ifndef BRUM_TOOLS_DOOMED_FILES_H
#define BRUM_TOOLS_DOOMED_FILES_H

namespace brum::tools {

/// Has the file `path` removed when a signal from the user or the system ends the process (SIGINT,
/// SIGTERM, SIGHUP), unless the process was started with that signal ignored. The text must stay
/// where it is until spare_file(). A few files at a time; more are not removed.
void doom_file(const char* path) noexcept;

/// Takes that back; `path` is the same pointer. Does nothing for a file that is not doomed.
void spare_file(const char* path) noexcept;

/// Removes the doomed files, for a process that is about to end. Safe in a handler of signals.
void remove_doomed_files() noexcept;

}  // namespace brum::tools

#endif  // BRUM_TOOLS_DOOMED_FILES_H
