# What scripts/run, scripts/test and scripts/bench share. Sourced, not run.

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

build_packages=(g++ cmake ninja-build ccache pkg-config libicu-dev libsqlite3-dev libsimdjson-dev rapidjson-dev qt6-base-dev)
test_packages=(libgtest-dev libgmock-dev librapidcheck-dev python3 tzdata sqlite3 man-db groff-base dpkg-dev file zsh fish
  clang libclang-rt-dev clang-format python3-gi gir1.2-glib-2.0 dbus-daemon dunst xvfb libfaketime)
long_test_packages=(clang-tidy)
bench_packages=(libbenchmark-dev taskwarrior)

# install_packages PACKAGE...: installs what is missing, on Debian and its kin; elsewhere names it and stops.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
      as_root=(sudo)
    else
      echo "These packages are missing: ${missing[*]}" >&2
      exit 1
    fi
  fi
  if ! command -v apt-get >/dev/null; then
    echo "This script installs packages on Debian and Ubuntu only; please install: ${missing[*]}" >&2
    exit 1
  fi
  echo "Installing ${missing[*]}" >&2
  "${as_root[@]}" apt-get update -qq >&2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# configure PRESET [ARGUMENT...]: configures build/PRESET unless that is done; the build redoes it when it must.
configure() {
  local preset="$1"
  shift
  if [ ! -f "$root/build/$preset/build.ninja" ] || [ $# -gt 0 ]; then
    (cd "$root" && cmake --preset "$preset" "$@")
  fi
}

# build PRESET [TARGET...]
build() {
  local preset="$1"
  shift
  local targets=()
  [ $# -gt 0 ] && targets=(--target "$@")
  cmake --build "$root/build/$preset" "${targets[@]}"
}
