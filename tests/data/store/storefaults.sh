#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# storefaults.sh WRITER
#
# Kills WRITER before each system call by which it makes the attachment store and stores an
# attachment in each way, and lets such calls fail. The next start must find the whole
# attachment or nothing, and a store that takes it. Skipped where strace cannot work.
set -euo pipefail
writer=$1
source "$(dirname "${BASH_SOURCE[0]}")/../../support/diskfaults.sh"

root=$directory/store/_data/att
form=memory
before=nothing # or what the last two attempts have left, or the store

prepare()
{
    case $before in
    nothing) rm -rf "$directory/store" ;;
    strays)
        rm -rf "$root"
        ls -dt "$root".* 2>/dev/null | tail -n +3 | xargs rm -rf || true
        ;;
    store) rm -f "$root"/*/* ;;
    esac
}

attempt()
{
    "$@" "$writer" "$directory/store" "$form"
}

check()
{
    # The next attempt is the next start.
    [[ $before != strays || -e $root ]] || return 0
    found=$("$writer" "$directory/store") || fail "Damaged, $1"
}

faults=0

# fails_at FAULT [STATUS [PATH]]: nothing may be stored, and the log has one line about it.
fails_at()
{
    local status=0
    prepare
    with_fault "$1" "${3:-}" || status=$?
    ((status == ${2:-1})) || fail "The writer ended with $status from $form with $1"
    (($(grep -c "Failed to\|sink failed" "$directory/log") == 1)) \
        || fail "Not one line after $1:" "$(cat "$directory/log")"
    check "after $1"
    [[ $found == nothing ]] || fail "There from $form after $1"
    faults=$((faults + 1))
}

kill_before mkdir 1 && kill_before mkdir 2 || fail "No directory was made"
before=strays
kill_before_each chmod mkdir
before=nothing
kill_before_each fsync rename renameat2
((killed >= 517)) || fail "The writer was killed $killed times only while it made the store"
aborted=134
for fault in mkdir:error=ENOSPC:when={1,3,100} chmod:error=EIO:when=100 \
    rename,renameat2:error=EIO; do
    fails_at "$fault" $aborted
done

before=store
for form in memory device download; do
    former=$killed
    kill_before_each fchmod write fsync fdatasync linkat rename
    ((killed - former >= 6)) || fail "The writer was killed $((killed - former)) times from $form"
    for fault in {fchmod,fsync,linkat}:error=EIO:when=1; do
        fails_at "$fault"
    done
    fails_at openat:error=EMFILE:when=2 1 "$root/f1" # after the look for strays
done
for form in memory device; do
    for fault in write:error={ENOSPC,EIO}:when=1; do
        fails_at "$fault"
    done
done
fails_at write:error=ENOSPC:when=3

# What killed writers have left goes a day later.
before=nothing
prepare
check "empty"
stray=$root/ab/$(printf '%030d' 1)
touch "$stray".{young1,older1}
mkdir -p "$root".{young1,older1}/00
touch -d "25 hours ago" "$stray.older1" "$root.older1"
check "with strays"
[[ ! -e $stray.older1 && ! -e $root.older1 ]] || fail "Old strays stay"
[[ -e $stray.young1 && -e $root.young1/00 ]] || fail "Young strays are gone"

printf 'killed %d times, %d faults\n' "$killed" "$faults"
