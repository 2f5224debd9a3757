// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Stores one generation of a cache after the other, to be killed at it:
//
//     cachewriter DIRECTORY [GENERATIONS [late]]
//
// Prints the generation that the file had at the start, 0 without one. Fails if the documents in
// the file are not all there, or not of one generation. Ends while the last one may still be on
// its way; `late` is after a QCoreApplication has been there.

#include "support/literals.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/context/documentcache.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSemaphore>
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
    QThreadPool::globalInstance()->setMaxThreadCount(1);
    const int last = former + (argc > 2 ? std::atoi(argv[2]) : 0);
    for (int generation = former + 1; former >= 0 && generation <= last; ++generation) {
        for (int index = 0; index < documents; ++index) {
            cache->insert(QString::number(index), { { "n"_s, generation } });
        }
        if (argc > 3) {
            const QCoreApplication application(argc, argv);
        }
        cache->store();
        if (generation < last) {
            QSemaphore behind; // the thread stays, which counts what fails
            QThreadPool::globalInstance()->start([&] { behind.release(); });
            behind.acquire();
        }
    }
    std::printf("%d\n", former);
    return former < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
