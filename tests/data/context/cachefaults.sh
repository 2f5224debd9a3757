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
    [[ $1 == mkdir || $1 == chmod ]] && rm -rf "$directory/cache" || former=$(generation)
}

# Stores one generation.
attempt()
{
    "$@" "$writer" "$directory/cache" 1
}

check()
{
    local next
    next=$(generation) || fail "Damaged, $1"
    ((next == former || next == former + 1)) || fail "$next after $former, $1"
}

kill_before_each mkdir chmod fchmod write fsync fdatasync linkat rename unlink
((killed >= 6)) || fail "The writer was killed $killed times only"

faults=0
for fault in write:error=ENOSPC:when=1 write:error=EIO:when=1 fsync:error=EIO:when=1 \
    fchmod:error=EPERM:when=2 rename:error=EIO:when=1; do
    former=$(generation)
    with_fault "$fault" || fail "The writer ended at $fault"
    [[ $(generation) == "$former" ]] || fail "The former file is gone after $fault"
    (($(grep -c "Failed to persist document cache" "$directory/log") == 1)) \
        || fail "Not one line after $fault:" "$(cat "$directory/log")"
    faults=$((faults + 1))
done
printf 'killed %d times, %d faults\n' "$killed" "$faults"
