#!/usr/bin/env bash
# SPDX-FileCopyrightText: The VorrelDataCore authors
# SPDX-License-Identifier: MIT
#
# check_layers.sh [ROOT]
#
# Keeps the arrows between the folders of src/vorrel pointing down, by reading the #include lines.
# A header includes its own layer or a lower one, without exception. A source file that must look
# up stands in layer-exceptions.txt beside this script, with its reason; an entry that is no longer
# needed is a failure too.
set -euo pipefail
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"

exceptions=cmake/checks/layer-exceptions.txt

find src/vorrel -name '*.h' -o -name '*.cpp' | LC_ALL=C sort | xargs grep -HE '^[ \t]*#[ \t]*include' \
    | awk -v exceptions="$exceptions" '
    BEGIN {
        # vorrel/util and vorrel/core do not know each other; vorrel/data may use both.
        count = split("base:0 store:0 core:1 properties:1 context:2 changefeed:3 jobs:3 transfer:4 "\
            "models:5 custom:5 documents:5 schema:6 archive:6 module:7", table, " ")
        for (i = 1; i <= count; ++i) {
            split(table[i], pair, ":")
            layers["data/" pair[1]] = pair[2]
        }
        layers["util"] = layers["core"] = -1
        while ((getline line < exceptions) > 0) {
            if (line ~ /^#/ || line ~ /^[ \t]*$/)
                continue
            if (line !~ /^src\/[^ ]+\.cpp +vorrel\/[^ ]+ +# *[^ ]/)
                fail(exceptions ": write \"src/….cpp vorrel/….h  # reason\": " line)
            split(line, word, " +")
            allowed[word[1] " " word[2]] = 1
        }
    }
    function fail(text) { print text; failed = 1 }

    # vorrel/data/models/filters/x.h is in data/models, vorrel/util/x.h in util; a header directly
    # in vorrel/data (the export header) belongs to the lowest layer.
    function folder(path, part) {
        split(path, part, "/")
        if (part[2] != "data")
            return part[2]
        return part[4] == "" ? "data/base" : "data/" part[3]
    }
    function looksUp(from, to) {
        if (layers[from] < 0)
            return from != to
        return layers[to] > layers[from]
    }

    {
        file = substr($0, 1, index($0, ":") - 1)
        target = $0
        sub(/^[^<"]*[<"]/, "", target)
        sub(/[>"].*/, "", target)
        from = folder(substr(file, 5))
        if (!(from in layers)) {
            fail(file ": the folder " from " has no layer; give it one in check_layers.sh")
        } else if ($0 ~ /include[ \t]*"/) {
            if (target !~ /^moc_[a-z0-9_]+\.cpp$/ && target !~ /^[a-z0-9_]+\.moc$/)
                fail(file ": write #include <vorrel/…> instead of \"" target "\"")
        } else if (target == "VorrelDataCore") {
            fail(file ": the umbrella header is for applications")
        } else if (target ~ /^vorrel\//) {
            to = folder(target)
            if (!(to in layers))
                fail(file ": <" target "> is in a folder without a layer")
            else if (looksUp(from, to) && !((file " " target) in allowed))
                fail(file ": " from " must not include " to " (<" target ">)")
            else if (looksUp(from, to))
                used[file " " target] = 1
        }
    }
    END {
        for (entry in allowed)
            if (!(entry in used))
                fail(exceptions ": no longer needed: " entry)
        exit failed
    }'
