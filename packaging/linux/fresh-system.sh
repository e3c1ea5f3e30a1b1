# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# Sourced with the script's arguments, [--release NAME] FOLDER...: provides a fresh Debian system for
# trials, Debian 12 by default. FOLDER keeps it for the next time. Needs root and Debian's archive.
# Takes the option away from the arguments.

export PATH=$PATH:/usr/sbin:/sbin # for chroot and debootstrap, since root's path may be a user's

# The script continues in a mount namespace of its own, which takes all mounts with it.
if [[ -z ${FW_UPDATE_TRIAL:-} ]]; then
    FW_UPDATE_TRIAL=$(mktemp -d)
    export FW_UPDATE_TRIAL
    trap 'rmdir "$FW_UPDATE_TRIAL"' EXIT
    as_root=()
    ((EUID == 0)) || as_root=(sudo --preserve-env=FW_UPDATE_TRIAL)
    "${as_root[@]}" unshare --mount --pid --fork --mount-proc --kill-child "$(realpath "$0")" "$@"
    exit
fi

release=bookworm
if [[ $1 == --release ]]; then
    release=$2
    shift 2
fi
folder=$(realpath -m "$1")
system=$folder/$release
root=$FW_UPDATE_TRIAL/root

# fresh: mounts the fresh system at $root. Memory takes all writes.
fresh() {
    ! mountpoint --quiet "$FW_UPDATE_TRIAL" || umount --recursive "$FW_UPDATE_TRIAL"
    mount -t tmpfs -o mode=0755 none "$FW_UPDATE_TRIAL"
    mkdir "$FW_UPDATE_TRIAL"/{upper,work,root}
    mount -t overlay none "$root" \
        -o "lowerdir=$system,upperdir=$FW_UPDATE_TRIAL/upper,workdir=$FW_UPDATE_TRIAL/work"
    mount -t proc none "$root/proc"
    mount --rbind /dev "$root/dev"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d" # starts no services
    chmod 0755 "$root/usr/sbin/policy-rc.d"
    inside apt-get update
}

inside() {
    chroot "$root" env --ignore-environment LC_ALL=C.UTF-8 HOME=/root DEBIAN_FRONTEND=noninteractive \
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

# logged NAME COMMAND...: keeps the output of COMMAND in FOLDER/NAME.log, and shows its end on failure.
logged() {
    "${@:2}" >"$folder/$1.log" 2>&1 || { tail -n 30 "$folder/$1.log"; return 1; }
}
