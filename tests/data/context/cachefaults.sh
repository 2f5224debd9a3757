#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# cachefaults.sh WRITER
#
# Kills WRITER before each system call by which it changes the disk, and lets such calls fail. The
# next start must find the former cache or the new one, whole. Skipped where strace cannot work.
set -euo pipefail
writer=$1
source "$(dirname "${BASH_SOURCE[0]}")/../../support/diskfaults.sh"

# Prints the generation in the file; fails if it is damaged.
generation()
{
    "$writer" "$directory/cache"
}

prepare()
{
    former=0
    [[ -n $fresh ]] && rm -rf "$directory/cache" || former=$(generation)
}

generations=1

attempt()
{
    "$@" "$writer" "$directory/cache" "$generations"
}

check()
{
    local next
    next=$(generation) || fail "Damaged, $1"
    ((next == former || next == former + 1)) || fail "$next after $former, $1"
}

fresh=yes
kill_before_each mkdir chmod
fresh=
kill_before_each fchmod write fsync fdatasync linkat rename unlink
((killed >= 6)) || fail "The writer was killed $killed times only"

# What cannot be stored is stored with the next generation. EMFILE hits the opening of the file,
# and then that of its directory, which only a loss of power needs.
faults=0
for fault in write:error={ENOSPC,EIO}:when=1 fsync:error=EIO:when=1 fchmod:error=EPERM:when=2 \
    rename:error=EIO:when=1 openat:error=EMFILE:when={1,2}; do
    for generations in 1 2; do
        former=$(generation)
        with_fault "$fault" "$([[ $fault != openat* ]] || echo "$directory/cache/killed")" \
            || fail "The writer ended at $fault"
        [[ $fault == openat*2 ]] && failed=0 || failed=1
        (($(grep -c "Failed to persist document cache" "$directory/log") == failed)) \
            || fail "Not $failed lines after $fault:" "$(cat "$directory/log")"
        (($(generation) == former + (generations > failed ? generations : 0))) \
            || fail "$(generation) after $former with $fault"
        faults=$((faults + 1))
    done
done

former=$(generation)
"$writer" "$directory/cache" 1 late >/dev/null || fail "The writer ended after its application"
(($(generation) == former + 1)) || fail "Nothing was stored after the application"
printf 'killed %d times, %d faults\n' "$killed" "$faults"
