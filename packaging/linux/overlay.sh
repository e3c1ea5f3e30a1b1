# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# Sourced with the script's arguments, for trials in a file system whose changes are lost.

export PATH=$PATH:/usr/sbin:/sbin # for chroot and debootstrap, since root's path may be a user's

# The script continues as root in namespaces of its own, which take all mounts and processes with
# them.
if [[ -z ${FW_UPDATE_TRIAL:-} ]]; then
    FW_UPDATE_TRIAL=$(mktemp -d)
    export FW_UPDATE_TRIAL
    trap 'rmdir "$FW_UPDATE_TRIAL"' EXIT
    as_root=()
    ((EUID == 0)) || as_root=(sudo --preserve-env=FW_UPDATE_TRIAL)
    "${as_root[@]}" unshare --mount --pid --fork --mount-proc --kill-child "$(realpath "$0")" "$@"
    exit
fi

root=$FW_UPDATE_TRIAL/files

# overlay SYSTEM: mounts the file system in the folder SYSTEM at $root. Memory takes all writes.
overlay() {
    ! mountpoint --quiet "$FW_UPDATE_TRIAL" || umount --recursive "$FW_UPDATE_TRIAL"
    mount -t tmpfs -o mode=0755 none "$FW_UPDATE_TRIAL"
    mkdir "$FW_UPDATE_TRIAL"/{upper,work,files}
    mount -t overlay none "$root" \
        -o "lowerdir=$1,upperdir=$FW_UPDATE_TRIAL/upper,workdir=$FW_UPDATE_TRIAL/work"
    mount -t proc none "$root/proc"
    mount --rbind /dev "$root/dev"
}
