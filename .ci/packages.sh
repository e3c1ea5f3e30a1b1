# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# Sourced by the scripts: the lists of packages, install_missing PACKAGE… for Debian, and
# install_homebrew for macOS. FW_UPDATE_QT chooses the version of Qt, 5 by default; a script's option
# --qt6 sets it for the scripts that it calls, too.
# shellcheck shell=bash disable=SC2034

if [ "${FW_UPDATE_QT:-5}" = 6 ]; then
    qt_suffix=-qt6 # of presets and build folders
    qt_packages=(qt6-base-dev qt6-serialport-dev)
    qt_private_packages=(qt6-base-private-dev)
    qt_designer_packages=(qt6-tools-dev)
    wayland_packages=(qt6-wayland) # opens the program natively on a Wayland desktop
    qt_desktop_packages=(
        qt6-gtk-platformtheme adwaita-qt6 qt6-image-formats-plugins libqt6svg6
        fcitx5-frontend-qt6)
else
    qt_suffix=
    qt_packages=(qtbase5-dev libqt5serialport5-dev)
    qt_private_packages=(qtbase5-private-dev)
    qt_designer_packages=(qttools5-dev)
    wayland_packages=(qtwayland5)
    qt_desktop_packages=(
        qt5-gtk-platformtheme plasma-integration kde-style-breeze kimageformat-plugins
        fcitx5-frontend-qt5)
fi

build_packages=(
    cmake ninja-build g++ pkg-config "${qt_packages[@]}" libhidapi-dev libudev-dev)

# The simulated device and the virtual screen. Only tests use the private headers, but the build
# cannot be configured without them.
simulator_packages=(
    umockdev libumockdev-dev libzip-dev zlib1g-dev libprotobuf-dev protobuf-compiler
    libssl-dev libx11-dev libxtst-dev xvfb fonts-dejavu-core "${qt_private_packages[@]}")

# Only for tests.
test_packages=(
    at-spi2-core dbus-daemon doxygen locales python3-serial "${qt_designer_packages[@]}" weston
    xwayland "${wayland_packages[@]}")

# A crowded desktop: GNOME's compositor, a screen reader, and the themes, styles, picture formats and
# input methods that desktops install for Qt.
desktop_packages=(
    mutter libgl1-mesa-dri orca speech-dispatcher xdotool ibus "${qt_desktop_packages[@]}")

# Compiler for the fuzz targets. Debian 12 offers its run-time library only by its version.
fuzz_packages=(clang libclang-rt-dev)
if grep -qsx 'VERSION_CODENAME=bookworm' /etc/os-release; then
    fuzz_packages=(clang libclang-rt-14-dev)
fi

# Linters and dynamic analysis.
quality_packages=(clang-format clang-tidy cppcheck clazy gcovr shellcheck valgrind)

# Benchmarks.
benchmark_packages=(binutils libbenchmark-dev libxdamage-dev)

# The virtual machine, which also runs programs from the host's file system.
machine_packages=(qemu-system-x86 busybox-static udev systemd)

# Builds and checks the packages.
packaging_packages=(
    appstream blhc clang debhelper desktop-file-utils dpkg-dev icnsutils libglib2.0-bin librsvg2-bin
    lintian lld llvm python3 strace udev xdotool)

# Builds and tests the packages in fresh systems.
distribution_packages=(autopkgtest debootstrap)

homebrew_packages=(cmake ninja pkg-config qt hidapi)

has_homebrew() { brew list "$1" >/dev/null 2>&1; }

# Installs the missing Homebrew packages and tells CMake where Qt is: Qt 6, or Qt 5 if only that is
# installed, which Homebrew no longer offers.
install_homebrew() {
    local package qt=qt
    if ! command -v brew >/dev/null; then
        echo "Homebrew is missing; install it first." >&2
        return 1
    fi
    if [ "${FW_UPDATE_QT:-5}" = 5 ] && has_homebrew qt@5 && ! has_homebrew qt; then
        qt=qt@5
    fi
    for package in "${homebrew_packages[@]}"; do
        [ "$package" != qt ] || package=$qt
        has_homebrew "$package" || brew install --quiet "$package"
    done
    # Newer versions of "qt" are made of packages that are only linked into the common prefix.
    CMAKE_PREFIX_PATH="$(brew --prefix "$qt");$(brew --prefix)"
    export CMAKE_PREFIX_PATH
}

is_installed() {
    dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

# Installs those of the given Debian packages that are missing.
install_missing() {
    local package missing=() as_root=()
    if ! command -v apt-get >/dev/null; then
        echo "There is no apt here. Install the equivalents of these Debian packages: $*" >&2
        return 0
    fi
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing; run as root or install sudo: ${missing[*]}" >&2
            return 1
        fi
    fi
    echo "installing: ${missing[*]}"
    # If an archive cannot be reached, the packages may still come from another one.
    "${as_root[@]}" apt-get update -qq || true
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y \
        --no-install-recommends "${missing[@]}" >/dev/null; then
        echo "These packages could not be installed: ${missing[*]}" >&2
        return 1
    fi
}
