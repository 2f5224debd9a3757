// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What it costs to take a large file into the attachment store, in processor time and in memory.

#include "support/benchmark.h"

#include <vorrel/core/locations.h>
#include <vorrel/data/store/attachmentstore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QCryptographicHash>
#include <QtCore/QTemporaryDir>

#include <sys/resource.h>

using namespace vo::benchmark;
using vo::data::AttachmentStore;

namespace {

rusage usageOf(int who)
{
    rusage usage {};
    getrusage(who, &usage);
    return usage;
}

double timeOfChildren() // in ms
{
    const rusage usage = usageOf(RUSAGE_CHILDREN);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
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
    for (int number = 0; number < 200; ++number) {
        file.write(QByteArray(1024 * 1024, char(number)));
    }
    const QString copy = QStringLiteral("md5sum %1 >/dev/null; cp %1 %1.copy; rm %1.copy");
    QList<double> ours, peers;
    const long memory = usageOf(RUSAGE_SELF).ru_maxrss; // in KiB
    for (int run = 0; run < report.runs() && file.seek(0); ++run) {
        ours << cpuTime([&file] {
                    QCryptographicHash hash(QCryptographicHash::Md5);
                    hash.addData(&file);
                    AttachmentStore::storeAttachment(&file, hash.result());
                    AttachmentStore::removeAttachment(hash.result());
                })
                / 1e6;
        const double start = timeOfChildren();
        peers << (std::system(qPrintable(copy.arg(file.fileName()))) == 0 ? timeOfChildren() - start
                                                                          : 0);
    }
    report.add({ QStringLiteral("hash and store 200 MB"), 1, QStringLiteral("ms"), median(ours),
                 QStringLiteral("md5sum, cp"), median(peers), 1.5 });
    report.add({ QStringLiteral("memory for that"), 1, QStringLiteral("MiB"),
                 double(usageOf(RUSAGE_SELF).ru_maxrss - memory) / 1024, QStringLiteral("4 MiB"), 4,
                 1 });
}
