# The build tree that scripts/run and scripts/test share: build/ at the root of the repository.
# To be sourced by bash.
# shellcheck shell=bash

brum_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
brum_build="$brum_root/build"

# brum_lock
# Waits until no other script of this project builds in the tree, and keeps the others waiting until
# brum_unlock or the end of the script.
brum_lock() {
  mkdir -p "$brum_build"
  exec {brum_lock_fd}>"$brum_build/.lock"
  flock "$brum_lock_fd"
}

brum_unlock() {
  exec {brum_lock_fd}>&-
}

# brum_configured
# Whether the tree has been configured, with whatever generator and options.
brum_configured() {
  [[ -f "$brum_build/build.ninja" || -f "$brum_build/Makefile" ]]
}

# brum_configure OPTION...
# Configures the tree with the given options of cmake; quiet unless that goes wrong. A new tree has
# no benchmarks, as no script needs them.
brum_configure() {
  local log="$brum_build/configure.log" new=()
  if ! brum_configured; then
    new=(-G Ninja -DBRUM_BUILD_BENCH=OFF)
  fi
  if ! cmake -S "$brum_root" -B "$brum_build" "${new[@]}" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
}
