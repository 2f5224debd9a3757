#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_picture.sh BUILD_TREE EXAMPLE [--offline]
#
# Runs an example as a user without a display does, with --offline also without a server on the
# cache of that run, and looks at the head of the picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
picture=$1/$2-test.png
for mode in '' "${@:3}"; do
    rm -f "$picture"
    VORREL_BUILD_DIR=$1 ./dev run "$2" $mode --picture "$picture"
    # The signature of a PNG file, then the size, 1100 x 720.
    head=$(od -An -tx1 -N24 "$picture" | tr -d ' \n')
    [[ $head == 89504e470d0a1a0a????????49484452"$(printf '%08x%08x' 1100 720)" ]]
done
