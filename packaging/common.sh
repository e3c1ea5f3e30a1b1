# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# Shared by the checks: prints a line for each check and counts failures.

failures=0

# expect TEXT COMMAND...: checks that COMMAND succeeds; otherwise shows its output below TEXT.
expect() {
    local text=$1 output
    shift
    if output=$("$@" 2>&1); then
        printf '  ok    %s\n' "$text"
    else
        printf '  FAIL  %s\n' "$text"
        [[ -z $output ]] || head -n 30 <<<"$output" | sed 's/^/        /'
        failures=$((failures + 1))
    fi
}

# reject TEXT COMMAND...: checks that COMMAND fails.
reject() {
    local text=$1
    shift
    expect "$text" not "$@"
}

not() {
    ! "$@"
}

# contains TEXT PATTERN: PATTERN is an extended regular expression that matches a line.
contains() {
    grep -Eq -- "$2" <<<"$1" || { printf '%s\n' "$1"; return 1; }
}

# same TEXT TEXT
same() {
    diff <(printf '%s\n' "$1") <(printf '%s\n' "$2")
}

summary() {
    ((failures == 0)) || { printf '%s: %d failed\n' "$1" "$failures" >&2; return 1; }
}
