// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// What a typed document costs: to make from its JSON, to keep, to read.

#include "support/benchmark.h"
#include "support/sampledocuments.h"

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/documentnode.h>
#include <vorrel/data/core/documentregistration.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QMetaProperty>

#include <memory>
#include <vector>

using namespace vo::benchmark;
using namespace vo::data;

class TypicalDocument : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "typical")
    VO_PROPERTY(QString, text0, setText0)
    VO_PROPERTY(QString, text1, setText1)
    VO_PROPERTY(QString, text2, setText2)
    VO_PROPERTY(QString, text3, setText3)
    VO_PROPERTY(QString, text4, setText4)
    VO_PROPERTY(double, number0, setNumber0)
    VO_PROPERTY(double, number1, setNumber1)
    VO_PROPERTY(double, number2, setNumber2)
    VO_PROPERTY(double, number3, setNumber3)
    VO_PROPERTY(double, number4, setNumber4)
    VO_PROPERTY(bool, flag0, setFlag0)
    VO_PROPERTY(bool, flag1, setFlag1)
    VO_PROPERTY(bool, flag2, setFlag2)
    VO_PROPERTY(bool, flag3, setFlag3)
    VO_PROPERTY(bool, flag4, setFlag4)

public:
    explicit TypicalDocument(Context *context);
    ~TypicalDocument() override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

struct TypicalDocument::Private
{
    TypicalDocument *const q;
    Property<QString> text0 { "text0", q };
    Property<QString> text1 { "text1", q };
    Property<QString> text2 { "text2", q };
    Property<QString> text3 { "text3", q };
    Property<QString> text4 { "text4", q };
    Property<double> number0 { "number0", q };
    Property<double> number1 { "number1", q };
    Property<double> number2 { "number2", q };
    Property<double> number3 { "number3", q };
    Property<double> number4 { "number4", q };
    Property<bool> flag0 { "flag0", q };
    Property<bool> flag1 { "flag1", q };
    Property<bool> flag2 { "flag2", q };
    Property<bool> flag3 { "flag3", q };
    Property<bool> flag4 { "flag4", q };
};

TypicalDocument::TypicalDocument(Context *context)
    : LinkedDocument(context)
    , d(new Private { this })
{ }

TypicalDocument::~TypicalDocument() = default;

VO_DEFINE_PROPERTY(TypicalDocument, QString, text0, setText0)
VO_DEFINE_PROPERTY(TypicalDocument, QString, text1, setText1)
VO_DEFINE_PROPERTY(TypicalDocument, QString, text2, setText2)
VO_DEFINE_PROPERTY(TypicalDocument, QString, text3, setText3)
VO_DEFINE_PROPERTY(TypicalDocument, QString, text4, setText4)
VO_DEFINE_PROPERTY(TypicalDocument, double, number0, setNumber0)
VO_DEFINE_PROPERTY(TypicalDocument, double, number1, setNumber1)
VO_DEFINE_PROPERTY(TypicalDocument, double, number2, setNumber2)
VO_DEFINE_PROPERTY(TypicalDocument, double, number3, setNumber3)
VO_DEFINE_PROPERTY(TypicalDocument, double, number4, setNumber4)
VO_DEFINE_PROPERTY(TypicalDocument, bool, flag0, setFlag0)
VO_DEFINE_PROPERTY(TypicalDocument, bool, flag1, setFlag1)
VO_DEFINE_PROPERTY(TypicalDocument, bool, flag2, setFlag2)
VO_DEFINE_PROPERTY(TypicalDocument, bool, flag3, setFlag3)
VO_DEFINE_PROPERTY(TypicalDocument, bool, flag4, setFlag4)

namespace {

qint64 msecs(const QJsonValue &date)
{
    return QDateTime::fromString(date.toString(), Qt::ISODate).toMSecsSinceEpoch();
}

/// The peer: the same values in a struct that knows its keys, and the references in its free data.
struct PlainDocument
{
    QString id, revision, label, version;
    qint64 created = 0, edited = 0;
    bool deleted = false;
    QString text[5];
    double number[5] {};
    bool flag[5] {};
    QJsonObject data;
    QHash<QString, int> references;

    explicit PlainDocument(const QJsonObject &json)
        : id(json.value(QLatin1String("_id")).toString())
        , revision(json.value(QLatin1String("_rev")).toString())
        , label(json.value(QLatin1String("label")).toString())
        , version(json.value(QLatin1String("creationVersion")).toString())
        , created(msecs(json.value(QLatin1String("created"))))
        , edited(msecs(json.value(QLatin1String("edited"))))
        , deleted(json.value(QLatin1String("deleted")).toBool())
        , data(json.value(QLatin1String(":data")).toObject())
    {
        static const QLatin1String textKeys[] { QLatin1String("text0"), QLatin1String("text1"),
                                                QLatin1String("text2"), QLatin1String("text3"),
                                                QLatin1String("text4") };
        static const QLatin1String numberKeys[] {
            QLatin1String("number0"), QLatin1String("number1"), QLatin1String("number2"),
            QLatin1String("number3"), QLatin1String("number4")
        };
        static const QLatin1String flagKeys[] { QLatin1String("flag0"), QLatin1String("flag1"),
                                                QLatin1String("flag2"), QLatin1String("flag3"),
                                                QLatin1String("flag4") };
        for (int index = 0; index < 5; ++index) {
            text[index] = json.value(textKeys[index]).toString();
            number[index] = json.value(numberKeys[index]).toDouble();
            flag[index] = json.value(flagKeys[index]).toBool();
        }
        countReferences();
    }

    void countReferences()
    {
        for (auto it = data.constBegin(); it != data.constEnd(); ++it) {
            const QJsonObject fields = it.value().toObject();
            for (auto field = fields.begin(); field != fields.end(); ++field) {
                const QString value = field.value().toString();
                if (value.startsWith(QLatin1String("$ref("))) {
                    ++references[value];
                }
            }
        }
    }
};

std::vector<QJsonObject> sampleObjects(int size)
{
    std::vector<QJsonObject> objects;
    for (int number = 0; number < size; ++number) {
        objects.push_back(sampleDocument(number));
    }
    return objects;
}

void measureMaking(Report &report, int size)
{
    const std::vector<QJsonObject> objects = sampleObjects(size);
    std::unique_ptr<Context> context;
    QHash<QByteArray, std::shared_ptr<PlainDocument>> structs;
    std::vector<QVariantMap> maps;
    const auto ours = [&] {
        for (const QJsonObject &object : objects) {
            keep(LinkedDocument::create(object, context.get()));
        }
    };
    const auto asStructs = [&] {
        for (const QJsonObject &object : objects) {
            const auto document = std::make_shared<PlainDocument>(object);
            structs.insert(document->id.toLatin1(), document);
        }
    };
    const auto asMaps = [&] {
        for (const QJsonObject &object : objects) {
            maps.push_back(object.toVariantMap());
        }
    };
    QList<double> times[3];
    for (int run = 0; run < report.runs(); ++run) {
        context = std::make_unique<Context>();
        structs = {};
        maps = {};
        times[0] << cpuTime(ours) / 1e3 / size;
        times[1] << cpuTime(asStructs) / 1e3 / size;
        times[2] << cpuTime(asMaps) / 1e3 / size;
    }
    const QString unit = QStringLiteral("us");
    report.add({ QStringLiteral("P2 document from a JSON object"), size, unit, median(times[0]),
                 QStringLiteral("plain structs in a hash"), median(times[1]), 1.6 });
    report.add({ QStringLiteral("P2 document from a JSON object"), size, unit, median(times[0]),
                 QStringLiteral("QVariantMap"), median(times[2]), 0.2 });
}

void measureMemory(Report &report, int size)
{
    const QString unit = QStringLiteral("B");
    std::vector<QJsonObject> objects = sampleObjects(size);
    for (QJsonObject &object : objects) {
        object.remove(QLatin1String(":data"));
    }
    Context context;
    std::vector<std::unique_ptr<QObject>> bare;
    const double ours = heapGrowth([&] {
        for (const QJsonObject &object : objects) {
            keep(LinkedDocument::create(object, &context));
        }
    });
    const double objectsAlone = heapGrowth([&] {
        for (int number = 0; number < size; ++number) {
            bare.push_back(std::make_unique<QObject>());
        }
    });
    report.add({ QStringLiteral("P3 memory of a built document"), size, unit, ours / size,
                 QStringLiteral("2,200 bytes (a bare QObject has %1)").arg(objectsAlone / size),
                 2200, 1 });

    Context other;
    std::vector<QJsonObject> whole;
    const double json = heapGrowth([&] { whole = sampleObjects(size); });
    const double nodes = heapGrowth([&] {
        for (int number = 0; number < size; ++number) {
            other.addDocumentNode(sampleId(number).toLatin1(), whole[std::size_t(number)]);
        }
    });
    report.add({ QStringLiteral("P3 memory of a node not built"), size, unit, (json + nodes) / size,
                 QStringLiteral("its JSON object + 200 bytes"), json / size + 200, 1 });
}

void measureReading(Report &report)
{
    constexpr int reads = 1000000;
    Context context;
    auto *document =
        qobject_cast<TypicalDocument *>(LinkedDocument::create(sampleDocument(1), &context));
    const QMetaObject &meta = TypicalDocument::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty("number3"));
    const int index = property.propertyIndex();
    const auto repeat = [](auto read) {
        return [read] {
            for (int count = 0; count < reads; ++count) {
                keep(read());
            }
        };
    };
    const QString unit = QStringLiteral("ns");
    const QString limit = QStringLiteral("20 ns");
    const auto perRead = [&](auto read) {
        QList<double> times;
        for (int run = 0; run < report.runs(); ++run) {
            times << cpuTime(repeat(read)) / reads;
        }
        return median(times);
    };
    report.add({ QStringLiteral("P8 read by the getter"), 1, unit,
                 perRead([&] { return document->number3(); }), limit, 20, 1 });
    report.add({ QStringLiteral("P8 read by a cached index"), 1, unit, perRead([&] {
                     double value = 0;
                     void *arguments[] { &value };
                     QMetaObject::metacall(document, QMetaObject::ReadProperty, index, arguments);
                     return value;
                 }),
                 limit, 20, 1 });
    report.compare({ QStringLiteral("P8 QMetaProperty::read"), reads, unit, 0,
                     QStringLiteral("QObject::property(name)"), 0, 0 },
                   repeat([&] { return property.read(document).toDouble(); }),
                   repeat([&] { return document->property("number3").toDouble(); }));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    Report report(QStringLiteral("documents"), argc, argv);
    registerDocument<TypicalDocument>();
    const QList<int> sizes = report.sizes();
    for (int size : sizes) {
        measureMaking(report, size);
    }
    for (int size : sizes) {
        measureMemory(report, size);
    }
    measureReading(report);
    return 0;
}

#include "bench_documents.moc"
