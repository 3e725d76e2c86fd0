# An empty Debian 12 to try things in. To be sourced by bash, after check.sh.
# shellcheck shell=bash

fresh_name=$(basename "$0")

fresh_need_root() {
  if ((EUID != 0)); then
    echo "$fresh_name: this needs root" >&2
    exit 1
  fi
}

# What apt reads bookworm's main archive and its updates from, one "URI SUITE" on each line.
fresh_archives() {
  # shellcheck disable=SC2016  # the names are those of apt
  apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' 'Component: main' |
    grep -E ' bookworm(-updates|-security)?$' | sort -u
}

# fresh_make PACKAGE,...: makes the system, with these packages, in the directory $fresh, which goes away
# at the end of the script. The mirror is the one that apt uses here.
fresh_make() {
  local archives mirror
  mapfile -t archives < <(fresh_archives)
  mirror=$(printf '%s\n' "${archives[@]}" | sed -n 's/ bookworm$//p' | grep '/debian/*$' | head -n 1)
  if [[ -z "$mirror" ]]; then
    echo "$fresh_name: apt has no source for Debian 12 (bookworm)" >&2
    exit 1
  fi
  fresh=$(mktemp -d)
  chmod 755 "$fresh" # apt downloads as a user of its own
  trap fresh_cleanup EXIT
  echo "$fresh_name: making an empty Debian 12"
  debootstrap --variant=minbase --include="$1" bookworm "$fresh" "$mirror" >"$fresh.log" 2>&1 || {
    tail -n 20 "$fresh.log" >&2
    exit 1
  }
  mount -t proc proc "$fresh/proc"
  mount -t devpts devpts "$fresh/dev/pts" # for programs that make a terminal
  # The same archives and the same way to reach them as here.
  printf 'deb %s main\n' "${archives[@]}" >"$fresh/etc/apt/sources.list"
  apt-config dump Acquire | grep -i proxy >"$fresh/etc/apt/apt.conf.d/90proxy" || true
  cp -L /etc/resolv.conf /etc/hosts "$fresh/etc/"
}

fresh_cleanup() {
  local place
  for place in dev/pts proc; do
    if mountpoint -q "$fresh/$place"; then
      umount "$fresh/$place"
    fi
  done
  rm -rf --one-file-system "$fresh" "$fresh.log"
}

# fresh_run DIRECTORY COMMAND...: runs it in that directory of the system.
fresh_run() {
  # shellcheck disable=SC2016  # for the shell inside
  chroot "$fresh" /usr/bin/env -i HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin \
    bash -c 'cd "$1" && shift && exec "$@"' - "$@"
}
