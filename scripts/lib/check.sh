# What the scripts named check-* share. To be sourced by bash.
# shellcheck shell=bash

brum_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
cd "$brum_root" || exit 1
. scripts/lib/packages.sh

# brum_sources PATTERN...
# The committed and the new files that match the patterns, one on each line.
brum_sources() {
  git ls-files --cached --others --exclude-standard -- "$@" | sort -u |
    while IFS= read -r file; do [[ -f "$file" ]] && printf '%s\n' "$file"; done
}

# brum_readme_program, brum_readme_output
# The first C++ program of README.md, and what README.md says that it prints.
brum_readme_program() {
  awk '/^```cpp$/ { inside = 1; next } /^```$/ && inside { exit } inside' README.md
}

brum_readme_output() {
  awk '/^```text output$/ { inside = 1; next } /^```$/ && inside { exit } inside' README.md
}
