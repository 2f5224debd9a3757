#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# lint.sh [--all] [ROOT]
#
# Runs clang-tidy over the sources that changed, committed or not; a changed header stands for its
# source. Changed means: since the merge base with origin/main or, on origin/main itself, during
# the last ten commits. VORREL_LINT_BASE names another commit to compare with.
set -euo pipefail
all=no
if [[ ${1:-} == --all ]]; then
    all=yes
    shift
fi
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

# Compiles none of the libraries: the sources only need the list of countries, and moc's output, which
# autogen writes without the libraries that the target <name>_autogen would wait for.
prepare()
{
    mkdir -p build
    { cmake --preset tidy && cmake --build build/tidy --target vorrel_region_codes; } \
        >build/tidy.log 2>&1 || {
        cat build/tidy.log
        return 1
    }
    find build/tidy -name AutogenInfo.json -print0 \
        | xargs -0 -I {} --max-procs="$(nproc)" cmake -E cmake_autogen {} RelWithDebInfo
}

comparison_base()
{
    local base=${VORREL_LINT_BASE:-}
    if [[ -z $base ]]; then
        base=$(git merge-base HEAD origin/main 2>/dev/null || git rev-parse HEAD)
        if [[ $base == $(git rev-parse HEAD) ]]; then
            base=$(git rev-list --first-parent --max-count=11 HEAD | tail -n 1)
        fi
    fi
    printf '%s\n' "$base"
}

changed_files()
{
    if [[ $all == no ]]; then
        git diff --name-only "$(comparison_base)"
        git ls-files --others --exclude-standard
    else
        git ls-files
    fi
}

# The changed sources that a target builds, and so have a compile command.
sources()
{
    changed_files | sed -nE 's,^((src|tests|examples)/.*)\.(cpp|h)$,\1,p' | sed 's/_p$//' | sort -u \
        | while IFS= read -r name; do
            if grep -qF "\"file\": \"$PWD/$name.cpp\"" build/tidy/compile_commands.json; then
                printf '%s\n' "$name.cpp"
            fi
        done
}

# Sources end with #include "moc_….cpp", and what moc writes is not ours to judge.
tidy()
{
    local output
    printf '%s\n' "$1"
    output=$(clang-tidy --quiet -p build/tidy --checks=-bugprone-suspicious-include \
        --header-filter="^$PWD/(src|tests|examples)/" "$1" 2>&1) || {
        printf '%s\n' "$output"
        return 1
    }
}
export -f tidy

prepare
# shellcheck disable=SC2016 # the inner shell expands $0
sources | xargs --no-run-if-empty --max-args=1 --max-procs="$(nproc)" bash -c 'tidy "$0"'
