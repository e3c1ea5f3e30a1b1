# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# Sourced by the scripts: the lists of packages by their names in Debian, install_missing PACKAGE…
# for Debian, Ubuntu and Fedora, and install_homebrew for macOS. FW_UPDATE_QT chooses the version of
# Qt, 5 by default; a script's option --qt6 sets it for the scripts that it calls, too.
# shellcheck shell=bash disable=SC2034

is_bookworm() { grep -qsx 'VERSION_CODENAME=bookworm' /etc/os-release; }

if [ "${FW_UPDATE_QT:-5}" = 6 ]; then
    qt_suffix=-qt6 # of presets and build folders
    qt_packages=(qt6-base-dev qt6-serialport-dev)
    qt_private_packages=(qt6-base-private-dev)
    qt_designer_packages=(qt6-tools-dev)
    wayland_packages=(qt6-wayland) # opens the program natively on a Wayland desktop
    qt_desktop_packages=(
        qt6-gtk-platformtheme adwaita-qt6 qt6-image-formats-plugins libqt6svg6
        fcitx5-frontend-qt6)
    kde_packages=()
else
    qt_suffix=
    qt_packages=(qtbase5-dev libqt5serialport5-dev)
    qt_private_packages=(qtbase5-private-dev)
    qt_designer_packages=(qttools5-dev)
    wayland_packages=(qtwayland5)
    qt_desktop_packages=(
        qt5-gtk-platformtheme adwaita-qt qt5-image-formats-plugins fcitx5-frontend-qt5)
    kde_packages=(plasma-integration kde-style-breeze kimageformat-plugins)
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

# A crowded desktop: GNOME's compositor, a screen reader, and the themes, styles, picture formats
# and input methods that desktops install for Qt.
desktop_packages=(
    mutter libgl1-mesa-dri orca speech-dispatcher xdotool ibus "${qt_desktop_packages[@]}")
if is_bookworm; then
    desktop_packages+=("${kde_packages[@]}") # KDE of later releases needs Qt 6
fi

# Compiler for the fuzz targets. Debian 12 offers its run-time library only by its version.
fuzz_packages=(clang libclang-rt-dev)
if is_bookworm; then
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
    appstream blhc build-essential clang debhelper desktop-file-utils dpkg-dev icnsutils
    libglib2.0-bin librsvg2-bin lintian lld llvm python3 strace udev xdotool)

# Builds and tests the packages in fresh systems.
distribution_packages=(autopkgtest debootstrap)

# What Fedora calls the packages for the demo and the tests. We have not tried these names.
fedora_names='
    at-spi2-core            at-spi2-core
    clang                   clang
    cmake                   cmake
    dbus-daemon             dbus-daemon
    doxygen                 doxygen
    fonts-dejavu-core       dejavu-sans-fonts
    g++                     gcc-c++
    libclang-rt-14-dev      compiler-rt
    libclang-rt-dev         compiler-rt
    libhidapi-dev           hidapi-devel
    libprotobuf-dev         protobuf-devel
    libqt5serialport5-dev   qt5-qtserialport-devel
    libssl-dev              openssl-devel
    libudev-dev             systemd-devel
    libumockdev-dev         umockdev-devel
    libx11-dev              libX11-devel
    libxtst-dev             libXtst-devel
    libzip-dev              libzip-devel
    locales                 glibc-locale-source
    ninja-build             ninja-build
    pkg-config              pkgconf-pkg-config
    protobuf-compiler       protobuf-compiler
    python3-serial          python3-pyserial
    qt6-base-dev            qt6-qtbase-devel
    qt6-base-private-dev    qt6-qtbase-private-devel
    qt6-serialport-dev      qt6-qtserialport-devel
    qt6-tools-dev           qt6-qttools-devel
    qt6-wayland             qt6-qtwayland
    qtbase5-dev             qt5-qtbase-devel
    qtbase5-private-dev     qt5-qtbase-private-devel
    qttools5-dev            qt5-qttools-devel
    qtwayland5              qt5-qtwayland
    umockdev                umockdev
    weston                  weston
    xvfb                    xorg-x11-server-Xvfb
    xwayland                xorg-x11-server-Xwayland
    zlib1g-dev              zlib-devel'

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

is_fedora() { command -v dnf >/dev/null && ! command -v apt-get >/dev/null; }

# Prints what Fedora calls a Debian package.
fedora_name() {
    local debian fedora
    while read -r debian fedora; do
        if [ "$debian" = "$1" ]; then
            echo "$fedora"
            return
        fi
    done <<<"$fedora_names"
    echo "Fedora's name of the package $1 is missing in .ci/packages.sh." >&2
    return 1
}

is_installed() {
    if is_fedora; then
        rpm --query --quiet --whatprovides "$1"
    else
        dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
    fi
}

# Installs packages by their names on this system.
install_as_root() {
    local as_root=() install
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing; run as root or install sudo: $*" >&2
            return 1
        fi
    fi
    echo "installing: $*"
    if is_fedora; then
        install=(dnf install --quiet --assumeyes --setopt=install_weak_deps=False)
    else
        install=(env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends)
        # If an archive cannot be reached, the packages may still come from another one.
        "${as_root[@]}" apt-get update -qq || true
    fi
    if ! "${as_root[@]}" "${install[@]}" "$@" >/dev/null; then
        echo "These packages could not be installed: $*" >&2
        return 1
    fi
}

# Installs those of the given Debian packages, or Fedora's equivalents, that are missing.
install_missing() {
    local package missing=()
    if ! command -v apt-get >/dev/null && ! is_fedora; then
        echo "Neither apt nor dnf is here. Install the equivalents of these Debian packages: $*" >&2
        return 0
    fi
    for package in "$@"; do
        if is_fedora; then
            package=$(fedora_name "$package") || return
        fi
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] || install_as_root "${missing[@]}"
}
