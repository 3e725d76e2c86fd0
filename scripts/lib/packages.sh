# Which Debian packages the project needs, and how the missing ones are installed.
# To be sourced by bash; docs/dependencies.md says what each package is for.
# shellcheck shell=bash

# shellcheck disable=SC2034  # used by the scripts that source this file
brum_build_packages=(g++ cmake ninja-build libgmp-dev libcli11-dev)
# shellcheck disable=SC2034
brum_test_packages=(libgtest-dev libgmock-dev librapidcheck-dev)
# shellcheck disable=SC2034
brum_python_packages=(pybind11-dev python3-dev python3-pip python3-pytest python3-setuptools python3-wheel)
# shellcheck disable=SC2034
brum_packaging_packages=(lintian dpkg-dev file gzip make pkg-config)
# shellcheck disable=SC2034
brum_instruction_packages=(libbenchmark-dev valgrind)
# shellcheck disable=SC2034
brum_bench_packages=(libbenchmark-dev libz3-dev libcvc5-dev cvc5 python3)

# brum_need PACKAGE...
# Installs those of the packages that are missing, and says which on standard error.
# Says nothing when none is missing. Without root it prints the line to run and ends the script with 1.
brum_need() {
  local package log missing=()
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    return 0 # not Debian: the build says what it does not find
  fi
  for package in "$@"; do
    if [[ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]]; then
      missing+=("$package")
    fi
  done
  if ((${#missing[@]} == 0)); then
    return 0
  fi
  if ((EUID != 0)); then
    {
      echo "$(basename "$0"): packages are missing; please run"
      echo "  sudo apt-get update && sudo apt-get install --no-install-recommends -y ${missing[*]}"
    } >&2
    exit 1
  fi
  echo "$(basename "$0"): installing ${missing[*]}" >&2
  if ! log=$(
    export DEBIAN_FRONTEND=noninteractive
    exec </dev/null
    apt-get update -qq 2>&1 &&
      apt-get install -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}" 2>&1
  ); then
    printf '%s\n' "$log" >&2
    echo "$(basename "$0"): the packages could not be installed" >&2
    exit 1
  fi
}
