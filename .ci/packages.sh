# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# Sourced by the commands in the root: install_missing PACKAGE… and what they need.
# shellcheck shell=bash disable=SC2034

build_packages=(
    cmake ninja-build g++ pkg-config
    qtbase5-dev libqt5serialport5-dev libhidapi-dev libudev-dev)

# The simulated device and the screen in front of which tests and demo run. The private headers are
# for tests, but nothing can be configured without them.
simulator_packages=(
    umockdev libumockdev-dev libzip-dev zlib1g-dev libprotobuf-dev protobuf-compiler
    libx11-dev libxtst-dev xvfb fonts-dejavu-core qtbase5-private-dev)

# What only the tests need.
test_packages=(doxygen qttools5-dev)

# What the fuzz targets are built with.
fuzz_packages=(clang libclang-rt-14-dev)

# What looks at the sources and the running program.
quality_packages=(clang-format clang-tidy cppcheck clazy gcovr valgrind xdotool)

# What measures the program.
benchmark_packages=(binutils libbenchmark-dev libxdamage-dev)

# The emulated machine, which sees this one's files and runs some of them.
machine_packages=(qemu-system-x86 busybox-static udev systemd)

# What makes the packages and looks at them.
packaging_packages=(
    appstream desktop-file-utils dpkg-dev icnsutils libglib2.0-bin librsvg2-bin lintian procps
    python3 strace udev xdotool)

is_installed() {
    dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

# Installs those of the given Debian packages that are not there yet.
install_missing() {
    local package missing=() as_root=()
    if ! command -v apt-get >/dev/null; then
        echo "There is no apt here; these Debian packages or their like have to be there: $*" >&2
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
            echo "These packages are missing, and only root can install them: ${missing[*]}" >&2
            return 1
        fi
    fi
    echo "installing: ${missing[*]}"
    # An archive that cannot be reached may not be the one that is needed.
    "${as_root[@]}" apt-get update -qq || true
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y \
        --no-install-recommends "${missing[@]}" >/dev/null; then
        echo "These packages are missing and could not be installed: ${missing[*]}" >&2
        return 1
    fi
}
