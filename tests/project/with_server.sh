#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# with_server.sh EXPECTED COMMAND…
#
# Runs a command with the URL of a local server behind it, which holds the sample content, and
# fails unless a line of its output is EXPECTED.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
expected=$1
shift

exec {announcements}< <(exec node devserver/server.js --port 0 --db sample)
server=$!
trap 'kill "$server"' EXIT
read -r -t 30 -u "$announcements" _ url
node devserver/fill.js "$url"
output=$(timeout 60 "$@" "${url%/*}" 2>&1) || { printf '%s\n' "$output"; exit 1; }
printf '%s\n' "$output"
grep -qxF -- "$expected" <<<"$output"
