#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_format.sh [--fix] [ROOT]
#
# Compares all C++ files, new ones included, with .clang-format, and names those that differ; --fix
# rewrites them.
set -euo pipefail
fix=no
if [[ ${1:-} == --fix ]]; then
    fix=yes
    shift
fi
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

cpp_files()
{
    git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' \
        | while IFS= read -r file; do [[ ! -e $file ]] || printf '%s\n' "$file"; done
}

if [[ $fix == yes ]]; then
    cpp_files | xargs --no-run-if-empty clang-format -i
    exit
fi
complaints=$(cpp_files | xargs --no-run-if-empty clang-format --dry-run -Werror 2>&1) || {
    sed -nE 's/^([^: ]+):[0-9]+:[0-9]+: error: .*/\1/p' <<<"$complaints" | uniq --count \
        | sed -E 's/^ *([0-9]+) (.*)/\2: \1 places differ from .clang-format; .\/dev format mends them/'
    exit 1
}
