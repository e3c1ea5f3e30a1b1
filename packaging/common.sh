# SPDX-FileCopyrightText: 2026 The FW Update developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# What the checks share: one line for each thing looked at, and a count of what failed.

failures=0

# expect TEXT COMMAND...: TEXT is true when COMMAND succeeds; what COMMAND says is shown if not.
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

# reject TEXT COMMAND...: the same for a COMMAND that must not succeed.
reject() {
    local text=$1
    shift
    expect "$text" not "$@"
}

not() {
    ! "$@"
}

# contains TEXT PATTERN: PATTERN is an extended regular expression for a line.
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
