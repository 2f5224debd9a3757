// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Walks over references: time per document has to stay the same from 1,000 to 100,000 documents.

#include "support/benchmark.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/properties/linkeddocumentmapproperty.h>
#include <vorrel/util/dependencygraph.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QRandomGenerator>

#include <memory>
#include <vector>

using namespace vo::benchmark;
using namespace vo::data;

/// A document that points at any number of others of its class.
class Junction : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "junction")
    Q_PROPERTY(QJsonObject exits READ exits NOTIFY exitsChanged)

public:
    explicit Junction(Context *context)
        : LinkedDocument(context)
    { }

    [[nodiscard]] QJsonObject exits() const { return m_exits.toJson().toObject(); }

Q_SIGNALS:
    void exitsChanged();

private:
    LinkedDocumentMapProperty<Junction> m_exits { "exits", this };
};

namespace {

/// Pairs of who needs whom, of \p size things.
using Links = std::vector<std::pair<int, int>>;

Links chain(int size)
{
    Links links;
    for (int number = 1; number < size; ++number) {
        links.emplace_back(number, number - 1);
    }
    return links;
}

Links diamonds(int size)
{
    Links links;
    for (int number = 3; number < size; number += 3) {
        links.insert(links.end(),
                     { { number, number - 1 },
                       { number, number - 2 },
                       { number - 1, number - 3 },
                       { number - 2, number - 3 } });
    }
    return links;
}

Links random(int size)
{
    QRandomGenerator generator(1);
    Links links;
    for (int number = 1; number < size; ++number) {
        for (int link = 0; link < 3; ++link) {
            links.emplace_back(number, int(generator.bounded(number)));
        }
    }
    return links;
}

double orderTime(const Links &links, int size)
{
    return cpuTime([&] {
               vo::util::DependencyGraph<QString> graph;
               for (const auto &[from, to] : links) {
                   graph.addDependency(QString::number(from), QString::number(to));
               }
               keep(graph.order());
           })
        / size;
}

/// Documents that point at each other, all built.
class LinkedSample
{
public:
    LinkedSample(const Links &links, int size)
    {
        std::vector<QJsonObject> exits { std::size_t(size) };
        for (const auto &[from, to] : links) {
            exits[std::size_t(from)].insert(QString::number(to), QString::number(to));
        }
        for (int number = 0; number < size; ++number) {
            m_documents.push_back(
                LinkedDocument::create({ { QStringLiteral("_id"), QString::number(number) },
                                         { QStringLiteral("type"), QStringLiteral("junction") },
                                         { QStringLiteral("exits"), exits[std::size_t(number)] } },
                                       &m_context));
        }
        m_context.finishIncubation();
    }

    double completeness()
    {
        return cpuTime([&] { keep(m_documents.back()->isComplete()); })
            / double(m_documents.size());
    }

    // Goes through all documents, since none leads to the new one.
    double cycleCheck()
    {
        auto *apart = LinkedDocument::create(QStringLiteral("junction"), &m_context);
        return cpuTime([&] { keep(apart->performCycleCheck(m_documents.back())); })
            / double(m_documents.size());
    }

private:
    Context m_context;
    std::vector<LinkedDocument *> m_documents;
};

using Measurement = std::function<double(const Links &, int)>;

void measure(Report &report, const QString &work, const Measurement &time)
{
    const std::pair<const char *, Links (*)(int)> shapes[] { { "chain", chain },
                                                             { "diamonds", diamonds },
                                                             { "random", random } };
    for (const auto &[name, shape] : shapes) {
        double smallest = 0;
        const QList<int> sizes = report.sizes();
        for (int size : sizes) {
            const Links links = shape(size);
            QList<double> times;
            for (int run = 0; run < report.runs(); ++run) {
                times << time(links, size);
            }
            const double perDocument = median(times);
            smallest = size == sizes.first() ? perDocument : smallest;
            report.add({ QStringLiteral("P16 %1, %2").arg(work, QLatin1String(name)), size,
                         QStringLiteral("ns"), perDocument, QStringLiteral("1,000 documents"),
                         smallest, 2 });
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("graph"), argc, argv);
    registerDocument<Junction>();
    measure(report, QStringLiteral("dependency order"), orderTime);
    measure(report, QStringLiteral("completeness"),
            [](const Links &links, int size) { return LinkedSample(links, size).completeness(); });
    measure(report, QStringLiteral("cycle check"),
            [](const Links &links, int size) { return LinkedSample(links, size).cycleCheck(); });
    return 0;
}

#include "bench_graph.moc"
