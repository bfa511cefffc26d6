# Sourced by ./run and ./test: installs the Debian packages that are not there yet.

build_packages="g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-serialport-dev
  qt6-svg-dev libqcustomplot-dev libqcustomplot2.1-qt6 libgl-dev libcli11-dev nlohmann-json3-dev
  libgeographiclib-dev"
run_packages="libqt6svg6 fonts-dejavu-core"
test_packages="libgtest-dev libgmock-dev locales-all appstream
  desktop-file-utils"
bench_packages="libbenchmark-dev"
# For ./test windows and scripts/windows: the cross compiler, and wine to run what it makes.
windows_packages="g++ cmake ninja-build llvm lld g++-mingw-w64-x86-64-posix wine wine64 dpkg-dev googletest
  libcli11-dev nlohmann-json3-dev libgeographiclib-dev"
windows_qt_packages="qt6-base-dev qt6-base-dev-tools libgl-dev librsvg2-bin icoutils nsis zip unzip
  xvfb xauth xdotool imagemagick fonts-dejavu-core"

need() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing: ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -q
  DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -q -y --no-install-recommends \
    "${missing[@]}"
}
