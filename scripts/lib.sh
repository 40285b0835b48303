# Code that the scripts share. A script sources this file first. That also changes to the root of the
# repository, whatever the caller's working directory.
# shellcheck shell=bash

set -euo pipefail
unset CDPATH
cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

# One sort order, one language of messages, and no more jobs than cores.
export LC_ALL=C.UTF-8
export CMAKE_BUILD_PARALLEL_LEVEL="${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}"
export CTEST_PARALLEL_LEVEL="${CTEST_PARALLEL_LEVEL:-$(nproc)}"

# The Debian packages for building the library and its command, those for the tests, and those for the Python
# module and its tests.
build_packages=(g++ cmake ninja-build libcli11-dev libssl-dev nlohmann-json3-dev)
# shellcheck disable=SC2034
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev locales patch python3-jsonschema)
# shellcheck disable=SC2034
python_packages=(python3-dev pybind11-dev mypy)

# say TEXT...: prints what happens now.
say() {
  printf '%s\n' "$*"
}

# fail LINE...: prints what went wrong and what to do next, and ends the script.
fail() {
  printf '%s: %s\n' "$(basename -- "$0")" "$1" >&2
  if (($# > 1)); then
    printf '  %s\n' "${@:2}" >&2
  fi
  exit 1
}

# quietly NAME COMMAND...: runs a command with its output in build/logs/NAME.log, and prints the log if the
# command fails.
quietly() {
  local log="build/logs/$1.log"
  shift
  mkdir -p build/logs
  if ! "$@" >"$log" 2>&1 </dev/null; then
    tail -n 100 -- "$log" >&2
    fail "command failed: $*" "Its whole output is in $PWD/$log."
  fi
}

# is_installed PACKAGE: whether this Debian package is installed.
is_installed() {
  dpkg-query -W -f '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# install_missing PACKAGE...: installs the Debian packages that are missing. Needs neither network nor root if
# none is missing, and never prompts.
install_missing() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    fail "this system is not Debian, so nothing can be installed for you." \
      "Install what these Debian packages hold, then build with CMake by hand (see README.md):" "$*"
  fi

  local package
  local missing=()
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  if ((${#missing[@]} == 0)); then
    return
  fi

  local as_root=()
  if ((EUID != 0)); then
    if ! sudo -n true 2>/dev/null; then
      fail "these Debian packages are missing: ${missing[*]}" \
        "Installing them needs root, or sudo without a password. Install them with" \
        "  apt-get install ${missing[*]}" \
        "and run this script again."
    fi
    as_root=(sudo -n)
  fi

  say "Installing ${missing[*]}"
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get -q -y -o DPkg::Lock::Timeout=300)
  mkdir -p build/logs
  "${apt[@]}" -o APT::Update::Error-Mode=any update >build/logs/apt-update.log 2>&1 </dev/null ||
    say "Some package lists could not be updated (is the network reachable?): build/logs/apt-update.log"
  quietly apt-install "${apt[@]}" install --no-install-recommends "${missing[@]}"
}

# build_preset NAME [TARGET...]: configures a preset and builds it, or only these targets, quietly.
build_preset() {
  local targets=()
  (($# == 1)) || targets=(--target "${@:2}")
  say "Building build/$1"
  quietly "configure-$1" cmake --preset "$1"
  quietly "build-$1" cmake --build --preset "$1" "${targets[@]}"
}

# is_checkout: whether this folder is the root of a git checkout rather than of a released archive.
is_checkout() {
  local root
  root="$(git rev-parse --show-toplevel 2>/dev/null)" && [[ "$root" -ef . ]]
}

# list_sources: prints the path of every file of the project, each followed by a NUL: files that git tracks or
# would add or, in a released archive, all except build output.
list_sources() {
  if is_checkout; then
    comm -z -23 <(git ls-files -z -co --exclude-standard | sort -z) <(git ls-files -z -d | sort -z)
  else
    find . \( -path './build*' -o -path ./.cache -o -path ./.git \) -prune -o ! -type d -printf '%P\0' |
      sort -z
  fi
}

# commands_of PAGE HEADING: prints the commands that the page shows below that heading: its indented lines.
commands_of() {
  awk -v heading="$2" '/^```/ { fenced = !fenced }
    !fenced && /^#+ / { sub(/^#+ /, ""); inside = $0 == heading; next }
    !fenced && inside && /^    / { print substr($0, 5) }' "$1"
}
