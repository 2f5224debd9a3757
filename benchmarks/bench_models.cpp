// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What one change of a search text costs until the rows of a view are others, through a filter, a
// sorter and a model that QML binds to each other; against a proxy model over the same texts.

#include "support/benchmark.h"
#include "support/gapprobe.h"
#include "support/sampledocuments.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/models/documentmodel.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QLocale>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QStringListModel>
#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlListReference>

using namespace vo::benchmark;
using namespace vo::data;

namespace {

const char *const chain = R"(import QtQml 2.15
import vorrel.data.Core 1.0
QtObject {
    property string search
    property DocumentFilter filter: DocumentFilter {
        StringFilterCriterion { property: "address"; contains: search }
    }
    property DocumentSorter sorter: DocumentSorter {
        documents: filter.result
        StringSortCriterion { property: "address" }
    }
    property DocumentModel model: DocumentModel { documents: sorter.result }
})";

/// The same texts in documents, for a chain, and in a model behind a proxy.
struct Setup
{
    explicit Setup(int size)
    {
        engine.addImportPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../qml"));
        QStringList all;
        for (int number = 0; number < size; ++number) {
            all << sampleName(number);
            auto *location =
                qobject_cast<Location *>(context.createDocument(QStringLiteral("location")));
            location->setAddress(all.constLast());
            documents << location;
        }
        texts.setStringList(all);
        proxy.setSourceModel(&texts);
        proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
        proxy.setSortLocaleAware(true);
        proxy.sort(0);
        settle();
        component.setData(chain, {});
        root.reset(component.create()); // what the engine takes for the first one does not count
        if (!root) {
            qFatal("%s", qPrintable(component.errorString()));
        }
    }

    /// Lets the documents finish what they put off, which frees memory.
    static void settle()
    {
        QEventLoop loop;
        QTimer::singleShot(500, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void makeChain()
    {
        root.reset(component.create());
        model = root->property("model").value<DocumentModel *>();
        QQmlListReference list(root->property("filter").value<QObject *>(), "documents");
        for (Document *document : std::as_const(documents)) {
            list.append(document);
        }
        waitForRows();
        Q_EMIT context.documentChanged(documents.constFirst()); // so that all have looked for it
        waitForRows();
    }

    void search(const QString &text)
    {
        root->setProperty("search", text);
        waitForRows();
    }

    void waitForRows() const
    {
        QEventLoop loop;
        QObject::connect(model, &DocumentModel::documentsChanged, &loop, &QEventLoop::quit);
        loop.exec();
    }

    QQmlEngine engine;
    QQmlComponent component { &engine };
    Context context;
    QList<Document *> documents;
    std::unique_ptr<QObject> root;
    DocumentModel *model = nullptr;
    QStringListModel texts;
    QSortFilterProxyModel proxy;
};

/// All of \p searches, one after the other, so that each run does the same.
void compareSearches(Report &report, const QString &work, Setup &setup, const QStringList &searches)
{
    const int size = int(setup.documents.size() * searches.size());
    report.compare(
        { work, size, QStringLiteral("ns"), 0, QStringLiteral("QSortFilterProxyModel"), 0, 1 },
        [&] {
            for (const QString &search : searches) {
                setup.search(search);
                keep(setup.model->rowCount());
            }
        },
        [&] {
            for (const QString &search : searches) {
                setup.proxy.setFilterFixedString(search);
                keep(setup.proxy.rowCount());
            }
        });
    double longest = 0;
    for (const QString &search : searches) {
        const GapProbe probe;
        setup.search(search);
        longest = std::max(longest, probe.longest());
    }
    report.add({ work + QStringLiteral(": longest gap"), int(setup.documents.size()),
                 QStringLiteral("ms"), longest, QStringLiteral("limit"), 16, 1 });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QLocale::setDefault(QLocale(QLocale::German));
    Report report(QStringLiteral("models"), argc, argv);
    const QList<int> sizes = report.sizes(10000);
    for (const int size : sizes) {
        Setup setup(size);
        const double bytes = heapGrowth([&setup] { setup.makeChain(); });
        report.add({ QStringLiteral("Memory of the chain, each row"), size, QStringLiteral("bytes"),
                     bytes / size, QStringLiteral("limit"), 200, 1 });
        compareSearches(report, QStringLiteral("Switch to another text"), setup,
                        { QStringLiteral("CHAIR"), QStringLiteral("TABLE") });
        compareSearches(report, QStringLiteral("Widen to a letter, and narrow"), setup,
                        { QStringLiteral("A"), QStringLiteral("WHITE TABLE") });
    }
    return 0;
}
