// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
.pragma library

// What stands on the page when there is none yet: lists of blocks, which may hold blocks.
var lists = {
    page: [
        { title: "Summer on the terrace", text: "Everything for long evenings.", tint: "#b86f3c" },
        { title: "Tables and chairs", text: "Three pieces that fit each other.", columns: 3,
          blocks: [{ title: "Oak table" }, { title: "Folding chair", tint: "#b3902f" },
                   { title: "Parasol", tint: "#7b6aa8" }] },
        { title: "Visit us", text: "Larkmere Utrecht, open until nine on Thursdays.", tint: "#3f7ca3" },
        { title: "Small print", text: "While stocks last.", hidden: true }
    ],
    shelf: [
        { title: "Newsletter", text: "New things, once a month.", tint: "#7b6aa8" },
        { title: "Garden lights", text: "For the week after next.", tint: "#b3902f", columns: 2 }
    ]
}

// Appends blocks to a list of the document.
function fill(document, list, blocks) {
    for (const block of blocks) {
        const id = document.newListItem(list, -1)
        for (const name in block) {
            if (name === "blocks")
                fill(document, nestedList(id), block.blocks)
            else
                document.setStructValue(id, name, block[name])
        }
    }
}

// The list of the blocks inside of a block. It goes where the block goes.
function nestedList(id) {
    return id + ":blocks"
}
