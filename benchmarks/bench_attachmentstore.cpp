// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What it costs to take a large file into the attachment store: wall time, since the peers are
// programs of their own, and memory.

#include "support/benchmark.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>

#include <cstdlib>
#include <sys/resource.h>

using namespace vo::benchmark;
using vo::data::AttachmentStore;

namespace {

constexpr int megabytes = 200;

double milliseconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void hashAndStore(QIODevice *file)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(file);
    AttachmentStore::storeAttachment(file, hash.result());
    AttachmentStore::removeAttachment(hash.result());
}

long peakMemory() // in KiB
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("attachment store"), argc, argv);
    const QTemporaryDir directory;
    vo::Locations::setCacheLocation(directory.path());
    AttachmentStore::init();
    QFile file(directory.filePath(QStringLiteral("large")));
    static_cast<void>(file.open(QIODevice::ReadWrite));
    for (int number = 0; number < megabytes; ++number) {
        file.write(QByteArray(1024 * 1024, char(number)));
    }
    const QString copy = QStringLiteral("md5sum %1 >%1.md5; cp %1 %1.copy").arg(file.fileName());
    const QString syncedCopy = copy + QStringLiteral("; sync %1.copy").arg(file.fileName());
    QList<double> ours, copies, syncedCopies;
    const long memory = peakMemory();
    for (int run = 0; run < report.runs(); ++run) {
        file.seek(0);
        ours << milliseconds([&] { hashAndStore(&file); });
        copies << milliseconds([&] { std::system(qPrintable(copy)); });
        syncedCopies << milliseconds([&] { std::system(qPrintable(syncedCopy)); });
    }
    const QString work = QStringLiteral("hash and store a file of 200 MB");
    const QString unit = QStringLiteral("ms");
    report.add({ work, 1, unit, median(ours), QStringLiteral("md5sum, cp"), median(copies), 1.5 });
    report.add({ work, 1, unit, median(ours), QStringLiteral("md5sum, cp, sync"),
                 median(syncedCopies), 1.5 });
    report.add({ QStringLiteral("memory for that"), 1, QStringLiteral("MiB"),
                 double(peakMemory() - memory) / 1024, QStringLiteral("4 MiB"), 4, 1 });
    return 0;
}
