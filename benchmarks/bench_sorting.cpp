// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What it costs to sort documents by a text, against a proxy model over the same texts, and to
// bring changed ones to their new places.

#include "support/benchmark.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/models/documentsorter.h>
#include <vorrel/data/models/sorters/stringsortcriterion.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringListModel>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

QString name(QRandomGenerator &random)
{
    static const QStringList words =
        QStringLiteral("Stuhl Tisch Regal Lampe Sofa Öl Bett Ähre Übertopf Kissen")
            .split(QLatin1Char(' '));
    const auto word = [&] { return words.at(random.bounded(int(words.size()))); };
    return QStringLiteral("%1 %2 %3").arg(word(), word()).arg(random.bounded(1000));
}

/// The same texts in documents behind a sorter and in a model behind a proxy.
struct Setup
{
    explicit Setup(int size)
    {
        sorter.setDelay(1000000);
        auto documents = sorter.documents();
        QStringList all;
        for (int number = 0; number < size; ++number) {
            all << name(random);
            auto *location =
                qobject_cast<Location *>(context.createDocument(QStringLiteral("location")));
            location->setAddress(all.constLast());
            locations << location;
            documents.append(&documents, location);
        }
        auto criteria = sorter.criteria();
        criteria.append(&criteria, &criterion);
        criterion.setProperty(QStringLiteral("address"));
        sorter.setDelay(0);
        texts.setStringList(all);
        proxy.setSourceModel(&texts);
        proxy.setSortLocaleAware(true);
        proxy.sort(0);
        QCoreApplication::processEvents();
    }

    void change(int row)
    {
        const QString text = name(random);
        locations.at(row)->setAddress(text);
        texts.setData(texts.index(row), text);
    }

    Context context;
    QRandomGenerator random { 1 };
    QList<Location *> locations;
    StringSortCriterion criterion;
    DocumentSorter sorter;
    QStringListModel texts;
    QSortFilterProxyModel proxy;
};

void compareSorts(Report &report, Setup &setup)
{
    const int size = int(setup.locations.size());
    report.compare(
        { QStringLiteral("Sort by a text"), size, QStringLiteral("ns"), 0,
          QStringLiteral("QSortFilterProxyModel"), 0, 0.5 },
        [&] {
            Q_EMIT setup.criterion.updateRequired();
            keep(setup.sorter.resultList());
        },
        [&] {
            setup.proxy.invalidate();
            keep(setup.proxy.rowCount());
        });
}

void compareChanges(Report &report, Setup &setup, int count, double limit)
{
    const int size = int(setup.locations.size());
    const auto row = [&](int number) { return int(qint64(number) * size / count); };
    QRandomGenerator random { 2 };
    report.compare(
        { QStringLiteral("Change %1 of %2").arg(count).arg(size), count, QStringLiteral("ns"), 0,
          QStringLiteral("QSortFilterProxyModel"), 0, limit },
        [&] {
            setup.sorter.setDelay(1000000);
            for (int number = 0; number < count; ++number) {
                if (number == count - 1) {
                    setup.sorter.setDelay(0);
                }
                Location *location = setup.locations.at(row(number));
                location->setAddress(name(random));
                Q_EMIT setup.context.documentChanged(location);
            }
            keep(setup.sorter.resultList());
        },
        [&] {
            for (int number = 0; number < count; ++number) {
                setup.texts.setData(setup.texts.index(row(number)), name(random));
            }
            keep(setup.proxy.rowCount());
        });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QLocale::setDefault(QLocale(QLocale::German));
    Report report(QStringLiteral("sorting"), argc, argv);
    const QList<int> sizes = report.sizes();
    for (const int size : sizes) {
        Setup setup(size);
        compareSorts(report, setup);
        compareChanges(report, setup, 1, 3);
        compareChanges(report, setup, 1000, 0.5);
    }
    return 0;
}
