# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# Sourced by scripts that define "fail SENTENCE": checks of folders, whose last argument is the way
# out.
# shellcheck shell=bash

# Fails unless files can be written to FOLDER.
check_writable() { # FOLDER REMEDY
    local file
    file=$(mktemp "$1/.fw-update.XXXXXX" 2>/dev/null) || fail "$1 is not writable; $2"
    rm "$file"
}

# Fails unless programs can be written to FOLDER and run there.
check_runnable() { # FOLDER REMEDY
    local program runs=no
    check_writable "$@"
    program=$(mktemp "$1/.fw-update.XXXXXX")
    chmod u+x "$program"
    [ ! -x "$program" ] || runs=yes
    rm "$program"
    [ $runs = yes ] || fail "programs cannot run in $1; $2"
}
