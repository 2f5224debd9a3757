// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What the values of a schema cost: documents with 20 of them, read from the bytes of their JSON
// and written to them, beside documents that keep the same JSON as it is.

#include "support/benchmark.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/properties/inlinedocumentproperty.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/schema.h>
#include <vorrel/data/schema/schemavaluestore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <memory>
#include <vector>

using namespace vo::benchmark;
using namespace vo::data;

class MeasuredValues : public SchemaValueStore
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "measuredvalues")

public:
    using SchemaValueStore::SchemaValueStore;
};

class MeasuredDocument : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "measured")
    Q_PROPERTY(vo::data::SchemaValueStore *values READ values NOTIFY valuesChanged)

public:
    using LinkedDocument::LinkedDocument;

    [[nodiscard]] SchemaValueStore *values() const { return m_values.get(); }

Q_SIGNALS:
    void valuesChanged();

private:
    InlineDocumentProperty<MeasuredValues> m_values { "values", this };
};

class PlainDocument : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "plain")
    Q_PROPERTY(QJsonObject values READ values NOTIFY valuesChanged)

public:
    using LinkedDocument::LinkedDocument;

    [[nodiscard]] QJsonObject values() const { return m_values.get(); }

Q_SIGNALS:
    void valuesChanged();

private:
    Property<QJsonObject> m_values { "values", this };
};

namespace {

using Bytes = std::vector<QByteArray>;

constexpr int variableCount = 20;

QString uuid(int variable)
{
    return QStringLiteral("%1").arg(variable, 32, 16, QLatin1Char('0'));
}

/// A schema with variables of five types in turn, under the id "schema".
void addSchema(Context *context)
{
    static const QStringList types { QStringLiteral("integer"), QStringLiteral("real"),
                                     QStringLiteral("boolean"), QStringLiteral("string"),
                                     QStringLiteral("date") };
    auto *schema = qobject_cast<Schema *>(
        context->createDocumentWithId(QStringLiteral("schema"), QStringLiteral("schema")));
    for (int variable = 0; variable < variableCount; ++variable) {
        const QString type = types.at(variable % types.size());
        schema->insertVariable(QLatin1String("schemavariable:") + type, uuid(variable));
    }
}

QVariant sampleValue(int document, int variable)
{
    switch (variable % 5) {
    case 0:
        return document;
    case 1:
        return document / 7.0;
    case 2:
        return document % 2 == 0;
    case 3:
        return QStringLiteral("Value %1 of document %2").arg(variable).arg(document);
    default:
        return QDate(2027, 1, 1).addDays(document);
    }
}

/// The stored documents, of \p type.
Bytes sampleDocuments(int size, const QString &type)
{
    Context context;
    addSchema(&context);
    auto *schema = qobject_cast<Schema *>(context.loadedDocument(QStringLiteral("schema")));
    MeasuredValues store(schema);
    store.setSchema(schema);
    Bytes all;
    for (int number = 0; number < size; ++number) {
        for (int variable = 0; variable < variableCount; ++variable) {
            store.setValue(schema->variableByUuid(uuid(variable)), sampleValue(number, variable));
        }
        const QJsonObject document {
            { QStringLiteral("_id"), QStringLiteral("document-%1").arg(number) },
            { QStringLiteral("_rev"), QStringLiteral("1-a") },
            { QStringLiteral("type"), type },
            { QStringLiteral("references"), QJsonArray { QStringLiteral("schema") } },
            { QStringLiteral("values"), store.serialize() },
        };
        all.push_back(QJsonDocument(document).toJson(QJsonDocument::Compact));
    }
    return all;
}

struct Side
{
    Bytes stored;
    std::unique_ptr<Context> context {};
    std::vector<LinkedDocument *> documents {};

    void start()
    {
        documents.clear();
        context = std::make_unique<Context>();
        addSchema(context.get());
    }

    void load()
    {
        for (const QByteArray &bytes : stored) {
            documents.push_back(
                LinkedDocument::create(QJsonDocument::fromJson(bytes).object(), context.get()));
        }
    }

    void save() const
    {
        for (const LinkedDocument *document : documents) {
            keep(QJsonDocument(document->serialize()).toJson(QJsonDocument::Compact));
        }
    }
};

void measure(Report &report, int size)
{
    Side ours { sampleDocuments(size, QStringLiteral("measured")) };
    Side plain { sampleDocuments(size, QStringLiteral("plain")) };
    QList<double> times[4];
    const auto perItem = [size](const auto &work) { return cpuTime(work) / 1e3 / size; };
    for (int run = 0; run < report.runs(); ++run) {
        ours.start();
        plain.start();
        times[0] << perItem([&] { ours.load(); });
        times[1] << perItem([&] { plain.load(); });
        times[2] << perItem([&] { ours.save(); });
        times[3] << perItem([&] { plain.save(); });
    }
    const QString unit = QStringLiteral("us");
    const QString anchor = QStringLiteral("the same JSON without schema");
    report.add({ QStringLiteral("load a document with 20 values of a schema"), size, unit,
                 median(times[0]), anchor, median(times[1]), 2 });
    report.add(
        { QStringLiteral("save it"), size, unit, median(times[2]), anchor, median(times[3]), 2 });
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    Report report(QStringLiteral("schemas"), argc, argv);
    registerDocument<MeasuredValues>();
    registerDocument<MeasuredDocument>();
    registerDocument<PlainDocument>();
    measure(report, 1000);
    return 0;
}

#include "bench_schemas.moc"
