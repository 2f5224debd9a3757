#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_format.sh [--fix] [ROOT]
#
# Compares all C++ files, new ones included, with .clang-format; --fix rewrites them.
set -euo pipefail
mode=(--dry-run -Werror)
if [[ ${1:-} == --fix ]]; then
    mode=(-i)
    shift
fi
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' \
    | while IFS= read -r file; do [[ ! -e $file ]] || printf '%s\n' "$file"; done \
    | xargs --no-run-if-empty clang-format "${mode[@]}"
