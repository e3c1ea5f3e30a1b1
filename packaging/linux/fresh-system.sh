# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# Sourced with the script's arguments, [--release NAME] FOLDER...: provides a fresh Debian system
# for trials, Debian 12 by default. FOLDER keeps it for the next time. Needs root and Debian's
# archive. Takes the option away from the arguments.

# shellcheck source=packaging/linux/overlay.sh
source "$(dirname "${BASH_SOURCE[0]}")/overlay.sh"

release=bookworm
if [[ $1 == --release ]]; then
    release=$2
    shift 2
fi
folder=$(realpath -m "$1")
system=$folder/$release

# fresh: provides the fresh system at $root.
fresh() {
    overlay "$system"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d" # starts no services
    chmod 0755 "$root/usr/sbin/policy-rc.d"
    inside apt-get update
}

# Debian's build machines have no home folder, either.
inside() {
    chroot "$root" env --ignore-environment LC_ALL=C.UTF-8 HOME=/nonexistent \
        DEBIAN_FRONTEND=noninteractive \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "$@"
}

add_packages() { # NAME...
    inside apt-get install --yes --no-install-recommends "$@"
}

# unpack DSC: extracts the source package to /build/sources in the fresh system.
unpack() {
    mkdir -p "$root/build"
    cp "$1" "${1%.dsc}".tar.* "$root/build"
    inside sh -ec 'cd /build && dpkg-source --extract ./*.dsc sources'
}

# logged NAME COMMAND...: keeps the output of COMMAND in FOLDER/NAME.log, and shows its end on
# failure.
logged() {
    "${@:2}" >"$folder/$1.log" 2>&1 || { tail -n 30 "$folder/$1.log"; return 1; }
}
