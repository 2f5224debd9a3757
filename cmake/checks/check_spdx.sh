#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_spdx.sh [ROOT]
#
# Every file under version control names its copyright and its licence in its first ten lines or,
# where the format has no comments, in a file beside it that is called FILE.license.
#
# Exempt: prose (*.md), the licence texts, and JSON files that only steer a tool (package.json,
# package-lock.json, CMakePresets.json). JSON below database/ is content and is not exempt.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

# An unpacked release has no repository; there every file counts.
list_files()
{
    if git rev-parse --git-dir >/dev/null 2>&1; then
        git ls-files
    else
        find . \( -name build -o -name node_modules \) -prune -o -type f -printf '%P\n'
    fi
}

# The file that has to hold the two lines for each file on the input.
holders()
{
    while IFS= read -r file; do
        [[ -e $file ]] || continue # deleted, and not yet committed
        case $file in
            *.md | LICENSES/*) ;;
            database/*.json | *.png | *.jpg | *.svg) printf '%s.license\n' "$file" ;;
            *.json) ;;
            *) printf '%s\n' "$file" ;;
        esac
    done
}

list_files | holders | awk '
    {
        copyright = licence = 0
        for (number = 0; number < 10 && (getline line < $0) > 0; ++number) {
            if (line ~ /SPDX-FileCopyrightText: The VorrelDataCore authors/)
                copyright = 1
            if (line ~ /SPDX-License-Identifier: [A-Za-z0-9.-]+/)
                licence = 1
        }
        close($0)
        if (!copyright || !licence) {
            printf "%s: SPDX-FileCopyrightText or SPDX-License-Identifier is missing\n", $0
            failed = 1
        }
    }
    END { exit failed }'
