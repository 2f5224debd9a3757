// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Stores one generation of a cache after the other, to be killed at it:
//
//     cachewriter DIRECTORY [GENERATIONS]
//
// Prints the generation that the file had at the start, 0 without one. Fails if the documents in
// the file are not all there, or not of one generation.

#include "support/literals.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QSet>
#include <QtCore/QThreadPool>

#include <cstdio>

using namespace vo::test;

namespace {

constexpr int documents = 50;

int generationOf(vo::data::DocumentCache &cache)
{
    QSet<int> generations;
    for (int index = 0; index < documents; ++index) {
        generations << cache.find(QString::number(index)).value("n"_s).toInt();
    }
    return generations.size() == 1 ? *generations.cbegin() : -1;
}

} // namespace

int main(int argc, char *argv[])
{
    vo::Locations::setCacheLocation(QString::fromLocal8Bit(argv[1]));
    const auto cache = vo::data::DocumentCache::getCache("killed"_s);
    const int former = generationOf(*cache);
    const int last = former + (argc > 2 ? std::atoi(argv[2]) : 0);
    for (int generation = former + 1; former >= 0 && generation <= last; ++generation) {
        for (int index = 0; index < documents; ++index) {
            cache->insert(QString::number(index), { { "n"_s, generation } });
        }
        cache->store();
        QThreadPool::globalInstance()->waitForDone();
    }
    std::printf("%d\n", former);
    return former < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
