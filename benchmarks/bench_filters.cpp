// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What it costs to filter documents by a text, against a proxy model over the same texts; to hear
// of changes elsewhere; and to read a property by its name.

#include "support/benchmark.h"
#include "support/sampledocuments.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/models/documentfilter.h>
#include <vorrel/data/models/filters/stringfiltercriterion.h>
#include <vorrel/data/models/propertyreader_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringListModel>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

/// The same texts in documents behind a filter and in a model behind a proxy.
struct Setup
{
    explicit Setup(int size)
    {
        filter.setDelay(1000000);
        auto documents = filter.documents();
        QStringList all;
        for (int number = 0; number < size; ++number) {
            all << sampleName(number);
            auto *location =
                qobject_cast<Location *>(context.createDocument(QStringLiteral("location")));
            location->setAddress(all.constLast());
            locations << location;
            documents.append(&documents, location);
        }
        auto criteria = filter.criteria();
        criteria.append(&criteria, &criterion);
        criterion.setProperty(QStringLiteral("address"));
        filter.setDelay(0);
        texts.setStringList(all);
        proxy.setSourceModel(&texts);
        proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
        outsider = context.createDocument(QStringLiteral("location"));
    }

    Context context;
    QList<Location *> locations;
    Document *outsider;
    StringFilterCriterion criterion;
    DocumentFilter filter;
    QStringListModel texts;
    QSortFilterProxyModel proxy;
};

/// All of \p searches, one after the other, so that each run does the same.
void compareSearches(Report &report, const QString &work, Setup &setup, const QStringList &searches)
{
    const int size = int(setup.locations.size() * searches.size());
    report.compare(
        { work, size, QStringLiteral("ns"), 0, QStringLiteral("QSortFilterProxyModel"), 0, 0.6 },
        [&] {
            for (const QString &search : searches) {
                setup.criterion.setContains(search);
                keep(setup.filter.resultList());
            }
        },
        [&] {
            for (const QString &search : searches) {
                setup.proxy.setFilterFixedString(search);
                keep(setup.proxy.rowCount());
            }
        });
}

void compareReads(Report &report, Setup &setup)
{
    const int index = Location::staticMetaObject.indexOfProperty("address");
    const QMetaProperty property = Location::staticMetaObject.property(index);
    PropertyReader reader(QStringLiteral("address"));
    report.compare(
        { QStringLiteral("Read a property by its name"), int(setup.locations.size()),
          QStringLiteral("ns"), 0, QStringLiteral("QMetaProperty::read"), 0, 1.4 },
        [&] {
            for (const Location *location : std::as_const(setup.locations)) {
                keep(reader.read(location));
            }
        },
        [&] {
            for (const Location *location : std::as_const(setup.locations)) {
                keep(property.read(location));
            }
        });
}

void measureChangesElsewhere(Report &report, Setup &setup)
{
    constexpr int changes = 100000;
    const double time = cpuTime([&setup] {
        for (int change = 0; change < changes; ++change) {
            Q_EMIT setup.context.documentChanged(setup.outsider);
        }
    });
    report.add({ QStringLiteral("Change of a document elsewhere"), int(setup.locations.size()),
                 QStringLiteral("ns"), time / changes, QStringLiteral("limit"), 100, 1 });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("filters"), argc, argv);
    const QList<int> sizes = report.sizes();
    for (const int size : sizes) {
        Setup setup(size);
        compareSearches(report, QStringLiteral("Switch to another text"), setup,
                        { QStringLiteral("CHAIR"), QStringLiteral("TABLE") });
        compareSearches(report, QStringLiteral("Widen to a letter, and narrow"), setup,
                        { QStringLiteral("A"), QStringLiteral("WHITE TABLE") });
        compareReads(report, setup);
        measureChangesElsewhere(report, setup);
    }
    return 0;
}
