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
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
# The writes that are counted are those to the file.
export QT_LOGGING_RULES="vorrel.*.info=false"

strace -qq -e trace=none true 2>/dev/null || { echo "strace is not usable here"; exit 77; }

fail()
{
    printf '%s\n' "$@" >&2
    exit 1
}

# Prints the generation in the file; fails if it is damaged.
generation()
{
    "$writer" "$directory/cache"
}

# Stores one generation with the fault CALL:FAULT; all lines of the writer go to the file `log`.
store()
{
    strace -f -qq -o /dev/null -e trace="${1%%:*}" -e inject="$1" \
        "$writer" "$directory/cache" 1 >/dev/null 2>"$directory/log"
}

killed=0
for call in mkdir chmod fchmod write fsync fdatasync linkat rename unlink; do
    for number in {1..9}; do
        former=0
        [[ $call == mkdir || $call == chmod ]] && rm -rf "$directory/cache" || former=$(generation)
        if store "$call:signal=KILL:when=$number" 2>/dev/null; then
            break # there is no such call
        fi
        killed=$((killed + 1))
        next=$(generation) || fail "Damaged, killed before $call $number"
        ((next == former || next == former + 1)) \
            || fail "$next after $former, killed before $call $number"
    done
done
((killed >= 6)) || fail "The writer was killed $killed times only"

faults=0
for fault in write:error=ENOSPC:when=1 write:error=EIO:when=1 fsync:error=EIO:when=1 \
    fchmod:error=EPERM:when=2 rename:error=EIO:when=1; do
    former=$(generation)
    store "$fault" || fail "The writer ended at $fault"
    [[ $(generation) == "$former" ]] || fail "The former file is gone after $fault"
    (($(grep -c "Failed to persist document cache" "$directory/log") == 1)) \
        || fail "Not one line after $fault:" "$(cat "$directory/log")"
    faults=$((faults + 1))
done
printf 'killed %d times, %d faults\n' "$killed" "$faults"
