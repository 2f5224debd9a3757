#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# For scripts that kill a program at its system calls, or let these fail; to be sourced. Leaves the
# script as skipped where strace cannot work.
#
# A script gives it three functions: `prepare` makes what is there before, `attempt STRACE…`
# runs the program under this command, and `check TEXT` fails unless the next start finds all in
# order.
# In memory where possible: what is killed here never waits for a disk.
directory=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
trap 'rm -rf "$directory"' EXIT
# The writes that are counted are those to the files.
ulimit -c 0
export QT_LOGGING_RULES="vorrel.*.info=false"

strace -qq -e trace=none true 2>/dev/null || { echo "strace is not usable here"; exit 77; }

fail()
{
    printf '%s\n' "$@" >&2
    exit 1
}

# with_fault CALL:FAULT [PATH]: attempts with this fault, of a call on PATH only. The lines of the
# program go to the file `log`.
with_fault()
{
    attempt strace -f -qq -o /dev/null -e trace="${1%%:*}" -e inject="$1" ${2:+-P "$2"} \
        >/dev/null 2>"$directory/log"
}

killed=0

# kill_before CALL NUMBER: fails if the program makes less calls than that.
kill_before()
{
    local status=0
    prepare
    with_fault "$1:signal=KILL:when=$2" 2>/dev/null || status=$?
    ((status)) || return 1
    ((status == 137)) || fail "The writer ended with $status before $1 $2"
    killed=$((killed + 1))
    check "killed before $1 $2"
}

# kill_before_each CALL…: before the first of each, the second, and so on to the last. Other calls
# (open, close) leave on the disk what the one before them has left.
kill_before_each()
{
    local call number
    for call; do
        for ((number = 1;; ++number)); do
            kill_before "$call" "$number" || break
        done
    done
}
