# Installs what building and testing need, and nothing when all of it is there. Sourced by the scripts.
# Debian 12 and its relatives by apt, macOS by Homebrew.

build_packages_debian=(
  g++ cmake ninja-build pkg-config ca-certificates
  libicu-dev libsimdjson-dev libtbb-dev libfmt-dev libcli11-dev libfyaml-dev libtomlplusplus-dev libminizip-dev
  libpango1.0-dev libcairo2-dev libqpdf-dev fonts-urw-base35
  qt6-base-dev libgl-dev qt6-qpa-plugins
)
test_packages_debian=(libgtest-dev libgmock-dev libbenchmark-dev libvalijson-dev nlohmann-json3-dev libzip-dev poppler-utils qpdf xvfb dbus)
package_packages_debian=(dpkg-dev file fakeroot gzip)
check_packages_debian=(clang-16 libclang-rt-16-dev clang-format)

build_packages_macos=(cmake ninja pkg-config icu4c simdjson tbb fmt cli11 libfyaml tomlplusplus minizip pango cairo qpdf qt@6)
test_packages_macos=(googletest google-benchmark valijson nlohmann-json libzip poppler)
package_packages_macos=()
check_packages_macos=(llvm clang-format)

# Runs a command as root: as it is for root, through sudo for others.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  else
    sudo "$@"
  fi
}

install_debian() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing with apt: ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

install_macos() {
  local missing=() package
  for package in "$@"; do
    brew list --versions "$package" >/dev/null 2>&1 || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing with Homebrew: ${missing[*]}"
  brew install --quiet "${missing[@]}"
}

# install_for build|test|check …: makes sure that the packages of these purposes are there.
install_for() {
  local system purpose list packages=()
  if [ "$(uname)" = Darwin ]; then
    system=macos
  elif command -v apt-get >/dev/null; then
    system=debian
  else
    echo "Neither apt nor Homebrew is here: install the packages of script/lib/install.sh by hand." >&2
    return 0
  fi
  for purpose in "$@"; do
    list="${purpose}_packages_${system}[@]"
    packages+=("${!list}")
  done
  "install_$system" "${packages[@]}"
}

# build PRESET [TARGET …]: configures when needed and builds, quietly unless something is wrong.
build() {
  local preset=$1 folder=build/$1 launcher=()
  shift
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  [ "$(uname)" = Darwin ] && launcher+=("-DCMAKE_PREFIX_PATH=$(brew --prefix icu4c);$(brew --prefix qt@6)")
  mkdir -p build
  if [ ! -e "$folder/build.ninja" ]; then
    echo "Configuring $folder"
    cmake --preset "$preset" "${launcher[@]}" >"$folder-configure.log" 2>&1 || {
      cat "$folder-configure.log" >&2
      return 1
    }
  fi
  echo "Building $folder"
  local log=$folder/build.log
  cmake --build --preset "$preset" ${1:+--target "$@"} >"$log" 2>&1 || {
    cat "$log" >&2
    return 1
  }
}
