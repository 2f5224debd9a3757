#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_picture.sh BUILD_TREE
#
# Runs the demo as a user without a display does, then without a server on the cache of that run,
# and looks at the head of the picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
picture=$1/catalog-test.png
for mode in '' --offline; do
    rm -f "$picture"
    VORREL_BUILD_DIR=$1 ./dev run $mode --picture "$picture"
    # The signature of a PNG file, then the size, 1100 x 720.
    head=$(od -An -tx1 -N24 "$picture" | tr -d ' \n')
    [[ $head == 89504e470d0a1a0a????????49484452"$(printf '%08x%08x' 1100 720)" ]]
done
