# The Debian packages that this project needs, by purpose, and how the missing ones are fetched.
# Sourced by ./run, ./run-tests, ./run-bench, .ci/run and packaging/; plain sh, for a machine that has nothing else yet.

# shellcheck disable=SC2034  # used by the scripts that source this file
BUILD_PACKAGES="g++ cmake ninja-build pkg-config qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-l10n-tools libgl-dev
  libsdl2-dev libsndfile1-dev libsystemd-dev libgtest-dev libgmock-dev"

# What the programs want at run time beyond the libraries that they are linked to. The converter finds libespeak-ng1
# when it runs, for drafts in languages other than English; the buttons of dialogs speak the user's language by
# qt6-translations-l10n.
RUN_PACKAGES="fonts-liberation fonts-dejavu-core x11-utils libespeak-ng1 qt6-translations-l10n"

# What drives the program from outside, in the tour and in the tests.
TOUR_PACKAGES="xvfb x11-xkb-utils openbox xdotool python3 python3-pil python3-pyqt5 dbus-daemon"
TEST_PACKAGES="python3-dbus python3-gi"

# Google Benchmark, and the noise that the wiggle is measured beside.
BENCH_PACKAGES="libbenchmark-dev libstb-dev"

# Format, lint, and the compiler of the fuzzers with its run-time library.
CHECK_PACKAGES="clang clang-format clang-tidy libclang-rt-dev"

# What makes Debian packages, and what looks at them and at what the desktop is told.
DEB_PACKAGES="debhelper dpkg-dev dh-python python3 lintian desktop-file-utils appstream shared-mime-info man-db libglib2.0-bin"

# Krita as the host: what bridges/krita/check works beside.
KRITA_PACKAGES="krita python3-pyqt5 python3-dbus"

# install_missing PACKAGE...: asks dpkg first, so that a machine that has all of them is left alone.
install_missing() {
  missing=""
  for package in "$@"; do
    case "$(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null)" in
      ii*) ;;
      *) missing="$missing $package" ;;
    esac
  done
  [ -z "$missing" ] && return 0

  as_root=""
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
      echo "These packages are missing, and only root can install them:$missing" >&2
      return 1
    fi
    as_root="sudo"
  fi
  echo "Installing:$missing"
  # shellcheck disable=SC2086  # both are lists of words
  $as_root apt-get -q update && $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get -qy -o Dpkg::Use-Pty=0 install --no-install-recommends $missing
}
