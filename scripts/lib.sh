# What scripts/run, scripts/test and scripts/bench share. Sourced, not run.

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
# What another checkout has compiled need not be compiled again.
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1

# What the windows need while they run.
qml_packages=(qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
  qml6-module-qtquick-window qml6-module-qtquick-layouts qml6-module-qtquick-controls qml6-module-qtquick-templates
  libqt6svg6)
build_packages=(g++ cmake ninja-build ccache pkg-config libicu-dev libsqlite3-dev libsimdjson-dev rapidjson-dev qt6-base-dev
  qt6-declarative-dev libqt6svg6-dev qt6-tools-dev qt6-l10n-tools libxcb1-dev libxcb-xfixes0-dev libsodium-dev
  libcurl4-openssl-dev libexpat1-dev libsecret-1-dev "${qml_packages[@]}")
test_packages=(libgtest-dev libgmock-dev librapidcheck-dev python3 tzdata sqlite3 man-db groff-base dpkg-dev file zsh fish
  clang libclang-rt-dev clang-format python3-gi gir1.2-glib-2.0 dbus-daemon dunst xvfb libfaketime
  openbox picom xdotool xfce4-panel xterm numlockx scrot xfconf python3-xlib at-spi2-core python3-pyatspi gir1.2-atspi-2.0 python3-pil
  fonts-dejavu-core desktop-file-utils appstream
  lighttpd lighttpd-mod-webdav openssl gnome-keyring)
# What a private desktop is made of, and the program's windows at run time.
desktop_test_packages=(xvfb openbox xfwm4 picom xfce4-panel dunst dbus-daemon at-spi2-core xterm fonts-dejavu-core adwaita-icon-theme
  qt6-translations-l10n python3 python3-gi gir1.2-glib-2.0 python3-xlib python3-pil libfaketime)
test_packages+=("${desktop_test_packages[@]}")
long_test_packages=(apache2-bin rclone clang-tidy kwin-wayland xdg-desktop-portal xdg-desktop-portal-kde qtwayland5 qt6-wayland)
bench_packages=(libbenchmark-dev taskwarrior xpad gnote)

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

# on_private_desktop PRESET SCRIPT [ARGUMENT...]: runs a script of tests/desktop with the programs of that build.
on_private_desktop() {
  local preset="$1" script="$2"
  shift 2
  QUILLO="$root/build/$preset/src/cli/quillo" QUILLO_DESKTOP="$root/build/$preset/src/app/quillo-desktop" \
    PYTHONPATH="$root/tests/cli:$root/tests/resident" /usr/bin/python3 -B "$root/tests/desktop/$script" "$@"
}
