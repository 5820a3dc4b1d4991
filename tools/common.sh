# Shared by ./run and ./test: what the project needs from the system, and how it is built. To be sourced by
# bash from a script that has set -euo pipefail and stands in the root of the project.

# Debian's names of what the product, its tests and the sample job need.
readonly QUILLET_PACKAGES=(
  g++ cmake ninja-build pkg-config gettext python3
  libicu-dev libsqlite3-dev nlohmann-json3-dev
  qt6-base-dev qt6-svg-dev
  libgtest-dev libbenchmark-dev
  desktop-file-utils appstream fonts-dejavu-core python3-markdown qt6-translations-l10n dbus-daemon
)
# What shows windows where nobody sees them, and moves hands before them, beside these.
readonly QUILLET_SCREEN_PACKAGES=(xvfb xauth xdotool)
# What makes a Debian package, beside these.
readonly QUILLET_DEB_PACKAGES=(dpkg-dev file)
# What the fuzz targets need beside these. The tests go on without them.
readonly QUILLET_FUZZ_PACKAGES=(clang libclang-rt-14-dev)
# The programs behind the packages, to judge a system whose packages have other names.
readonly QUILLET_PROGRAMS=(g++ cmake ninja pkg-config msgfmt python3)

# A progress sentence, on its own line and marked, so that it is found between the output of the tools.
say() { printf '== %s\n' "$*"; }

fail() {
  printf '== %s\n' "$*" >&2
  exit 1
}

# The name of this system as it calls itself, for sentences.
system_name() {
  local name
  name=$(. /etc/os-release 2>/dev/null && printf '%s' "${PRETTY_NAME:-}") || true
  printf '%s' "${name:-$(uname -s)}"
}

is_debian_12() {
  [[ -r /etc/os-release ]] && [[ $(. /etc/os-release && printf '%s %s' "${ID:-}" "${VERSION_ID:-}") == 'debian 12' ]]
}

# Prints those of the packages that are not installed, one a line.
missing_packages() {
  local package
  local -A installed=()
  # One question for all of them, so that a second call of ./run or ./test is quick.
  while read -r package; do
    installed[$package]=1
  done < <(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
    sed -n 's/^installed //p')
  for package in "$@"; do
    [[ -n ${installed[$package]:-} ]] || printf '%s\n' "$package"
  done
}

# apt-get as root, without questions.
apt_get() {
  local -a as_root=()
  if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || return 1
    as_root=(sudo)
  fi
  ${as_root[@]+"${as_root[@]}"} env DEBIAN_FRONTEND=noninteractive apt-get --quiet --yes "$@"
}

# Installs packages. The lists are fetched only where there are none, or where they turn out to be too old.
install_packages() {
  local -a install=(install --no-install-recommends "$@")
  if ! compgen -G '/var/lib/apt/lists/*_Packages*' >/dev/null; then
    apt_get update && apt_get "${install[@]}"
    return
  fi
  apt_get "${install[@]}" || { apt_get update && apt_get "${install[@]}"; }
}

# require_packages [PACKAGE...]: sees to it that Debian 12 has what the build needs, and these. Another system
# is told what is missing and is left as it is.
require_packages() {
  local -a missing=()
  if ! is_debian_12; then
    require_programs
    return
  fi
  mapfile -t missing < <(missing_packages "${QUILLET_PACKAGES[@]}" "$@")
  [[ ${#missing[@]} -eq 0 ]] && return
  if [[ $(id -u) -ne 0 ]] && ! command -v sudo >/dev/null; then
    fail "These packages are missing, and there is neither root nor sudo to install them: ${missing[*]}"
  fi
  say "Installing from Debian: ${missing[*]}"
  install_packages "${missing[@]}" || fail "apt-get could not install: ${missing[*]}"
}

# On a system other than Debian 12 nothing is installed: go on where the programs are there, else say what is
# needed.
require_programs() {
  local program
  local -a missing=()
  for program in "${QUILLET_PROGRAMS[@]}"; do
    command -v "$program" >/dev/null || missing+=("$program")
  done
  say "This system is $(system_name). Quillet is built and tested on Debian 12, and only there packages are installed."
  if [[ ${#missing[@]} -gt 0 ]]; then
    fail "Please install ${missing[*]} and the libraries yourself; Debian 12 calls them: ${QUILLET_PACKAGES[*]}"
  fi
  say "The programs that the build needs are here, so it goes on and tries."
}

# True when the fuzz targets can be built. Tries to install what they need on Debian 12.
fuzzing_available() {
  local -a missing=()
  if is_debian_12; then
    mapfile -t missing < <(missing_packages "${QUILLET_FUZZ_PACKAGES[@]}")
    if [[ ${#missing[@]} -gt 0 ]]; then
      say "Installing from Debian for the fuzz targets: ${missing[*]}"
      install_packages "${missing[@]}" >/dev/null || return 1
    fi
  fi
  command -v clang++ >/dev/null
}

# build_preset PRESET [argument of cmake --build...]: configures and builds.
build_preset() {
  local preset=$1
  shift
  say "Configuring and building the preset $preset"
  cmake --preset "$preset" || fail "The preset $preset could not be configured."
  cmake --build --preset "$preset" "$@" || fail "The preset $preset could not be built."
}
