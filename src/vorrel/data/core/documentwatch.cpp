// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/core/documentwatch_p.h>

#include <algorithm>
#include <vector>

namespace vo::data {

namespace {

std::vector<DocumentWatch *> &watches()
{
    static thread_local std::vector<DocumentWatch *> all;
    return all;
}

} // namespace

DocumentWatch::DocumentWatch()
{
    watches().push_back(this);
}

DocumentWatch::~DocumentWatch()
{
    auto &all = watches();
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
}

void DocumentWatch::announce(const Document *document)
{
    for (DocumentWatch *watch : watches()) {
        watch->documentDestroyed(document);
    }
}

} // namespace vo::data
