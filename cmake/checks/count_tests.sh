#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# count_tests.sh [ROOT]
#
# Prints how many lines of tests there are for the lines of the libraries; a quarter to a third is
# wanted. The doubles and fixtures in tests/support count on neither side.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

# The lines of the C++ and QML files that `find` selects with these arguments.
count_lines()
{
    find "$@" -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.qml' \) -exec cat {} + | wc -l
}

tests=$(count_lines tests -path tests/support -prune -o)
code=$(count_lines src)
printf 'tests %d lines, code %d lines, share %d %%\n' "$tests" "$code" $((100 * tests / (code ? code : 1)))
