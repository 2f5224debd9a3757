#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_translations.sh FOLDER
#
# Every language in the folder has a text for each id that one of them has.
set -euo pipefail
cd "$1"

ids_with_text()
{
    tr -d '\n' <"$1" | grep -oP '<message id="\K[^"]+(?=">\s*<source>[^<]+</source>\s*<translation>[^<]+<)' | sort
}

all=$(grep -ohP '<message id="\K[^"]+' ./*.ts | sort -u)
for file in *.ts; do
    missing=$(comm -23 <(printf '%s\n' "$all") <(ids_with_text "$file"))
    if [[ -n $missing ]]; then
        printf '%s: no text for\n%s\n' "$file" "$missing"
        exit 1
    fi
done
