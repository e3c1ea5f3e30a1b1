# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
#
# Functions for tests/vm/run that download a kernel and start a virtual machine with it. They use
# $checkout and $vm, and write to $vm only.
# shellcheck shell=bash disable=SC2034,SC2154

# The modules that the machine loads. Their dependencies are added.
readonly modules=(
    virtio_pci 9pnet_virtio 9p overlay dummy_hcd usb_f_hid usb_f_acm usbhid hid-generic cdc-acm
    evdev)

apt_options=()

# Makes apt use a separate package list, in case the system's is empty or out of date.
use_own_package_lists() {
    echo "vm: fetching the list of packages"
    mkdir -p "$vm/apt/lists/partial" "$vm/apt/cache/archives/partial"
    apt_options=(-o "Dir::State::Lists=$vm/apt/lists" -o "Dir::Cache=$vm/apt/cache")
    apt-get "${apt_options[@]}" -qq update
}

# The metapackage depends on the current kernel, whose name changes with each update.
kernel_package() {
    apt-cache "${apt_options[@]}" depends linux-image-amd64 2>/dev/null \
        | sed -n 's/^ *Depends: \(linux-image-[0-9].*-amd64\)$/\1/p' | head -n 1
}

# Downloads and unpacks the kernel into $vm/kernel.new.
unpack_kernel() { # PACKAGE
    local folder=$vm/kernel.new
    rm -rf "$folder"
    mkdir -p "$folder/package" "$folder/modules" || return
    (cd "$folder" && apt-get "${apt_options[@]}" -q download "$1" >download.log 2>&1) || return
    dpkg-deb --fsys-tarfile "$folder/$1"_*.deb \
        | tar -x -C "$folder/package" ./boot ./lib/modules || return
    busybox depmod -b "$folder/package" "${1#linux-image-}" || return
    cp "$folder"/package/boot/vmlinuz-* "$folder/vmlinuz"
    pick_modules "$folder/package/lib/modules/${1#linux-image-}" "$folder/modules" || return
    rm -r "$folder/package" "$folder/$1"_*.deb
}

# Makes sure that $vm/kernel contains Debian's current kernel, or an older one if a download fails.
fetch_kernel() {
    local package
    package=$(kernel_package)
    [[ -n $package ]] || { use_own_package_lists && package=$(kernel_package); }
    [[ -n $package && $package != "$(cat "$vm/kernel/name" 2>/dev/null)" ]] || return 0
    echo "vm: downloading $package"
    if ! unpack_kernel "$package"; then
        use_own_package_lists
        package=$(kernel_package)
        [[ -n $package ]] && unpack_kernel "$package" || return 0
    fi
    rm -rf "$vm/kernel"
    mv "$vm/kernel.new" "$vm/kernel"
    echo "$package" >"$vm/kernel/name"
}

# Copies the modules and their dependencies, numbered in load order.
pick_modules() { # FROM TO
    local files file number=10
    files=$(awk -v names="${modules[*]}" '
        function visit(file,   needed, count, i) {
            if (file in seen) return
            seen[file] = 1
            count = split(needs[file], needed, " ")
            for (i = count; i > 0; --i) visit(needed[i])
            print file
        }
        {
            file = $1; sub(/:$/, "", file)
            needs[file] = substr($0, length($1) + 2)
            module = file; sub(/.*\//, "", module); sub(/\.ko.*/, "", module)
            fileOf[module] = file
        }
        END {
            count = split(names, wanted, " ")
            for (i = 1; i <= count; ++i) {
                if (!(wanted[i] in fileOf)) {
                    print "vm: the kernel has no module " wanted[i] > "/dev/stderr"
                    exit 1
                }
                visit(fileOf[wanted[i]])
            }
        }' "$1/modules.dep") || return
    for file in $files; do
        cp "$1/$file" "$2/$number-${file##*/}" || return
        number=$((number + 1))
    done
}

# Packs busybox, the modules and guest-init into $vm/initramfs.
make_initramfs() { # ARGUMENT-FOR-GUEST-MAIN…
    local root=$vm/initramfs.root
    rm -rf "$root"
    mkdir -p "$root"/{bin,proc,sys,dev,host,upper,newroot}
    cp "$(command -v busybox)" "$root/bin/busybox"
    cp -r "$vm/kernel/modules" "$root/modules"
    install -m 0755 "$checkout/tests/vm/guest-init" "$root/init"
    printf '%s' "$checkout" >"$root/checkout"
    printf '%s\n' "$@" >"$root/arguments"
    (cd "$root" && find . | busybox cpio -o -H newc -R 0:0 2>/dev/null) >"$vm/initramfs"
    rm -r "$root"
}

# Starts the machine in the background and sets $machine to its process id. The machine's clock
# counts executed instructions, so that programs in it are not late when the host is busy.
start_machine() {
    local folder=${vm//,/,,}
    rm -rf "$vm/out" "$vm/console.log"
    mkdir -p "$vm/out"
    qemu-system-x86_64 \
        -accel tcg -icount shift=0 -cpu max -smp 1 -m 1536 \
        -nodefaults -no-user-config -nographic -no-reboot \
        -kernel "$vm/kernel/vmlinuz" -initrd "$vm/initramfs" \
        -append "console=ttyS0 panic=-1 mitigations=off" \
        -fsdev "local,id=host,path=/,security_model=none,readonly=on,multidevs=remap" \
        -device virtio-9p-pci,fsdev=host,mount_tag=host \
        -fsdev "local,id=out,path=$folder/out,security_model=none" \
        -device virtio-9p-pci,fsdev=out,mount_tag=out \
        -serial "file:$vm/console.log" -serial stdio </dev/null &
    machine=$!
}
