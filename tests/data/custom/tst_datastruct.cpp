// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/data/custom/customdata.h>
#include <vorrel/data/custom/datafield.h>
#include <vorrel/data/custom/datastruct.h>

#include <QtCore/QRandomGenerator>
#include <QtGui/QColor>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

#include <cmath>

using namespace vo::data;
using namespace vo::test;

namespace {

template <typename T>
std::unique_ptr<T> make(QQmlEngine &engine, const QString &text)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nimport vorrel.data.Core 1.0\n" + text.toUtf8(), {});
    if (component.isError())
        qFatal("%s", qPrintable(component.errorString()));
    return std::unique_ptr<T>(qobject_cast<T *>(component.create()));
}

constexpr double huge = 1e300;
constexpr int first = std::numeric_limits<int>::min();
constexpr int last = std::numeric_limits<int>::max();
const QJsonValue none(QJsonValue::Undefined);
const QVariant noDate = QDate();

/// What a value is brought to, what is stored of that, and what a stored value reads as.
struct Row
{
    QString field;
    QVariant value;
    QVariant converted;
    QJsonValue stored;
    QJsonValue json = none;
    QVariant read = {};
};

QVector<Row> rows()
{
    const auto range = "IntegerField { minimum: 10; maximum: 1; defaultValue: 5 }"_s;
    const auto price = "FloatField { minimum: 0.5; defaultValue: 0.25 }"_s;
    const auto color = "ColorField { defaultValue: '#102030' }"_s;
    const QColor grey(0x10, 0x20, 0x30);
    return {
        { "BooleanField {}"_s, true, true, true, "true"_s, false },
        { "BooleanField { defaultValue: true }"_s, QVariant(), true, none, 0, true },
        { "BooleanField { defaultValue: true }"_s, 0, false, false, false, false },
        { range, 12, 10, 10, 11, 10 },
        { range, "many"_s, 5, none, "7"_s, 5 },
        { range, -7, 1, 1, 7.5, 5 },
        { "IntegerField {}"_s, huge, last, last, huge, 0 },
        { "IntegerField {}"_s, -huge, first, first, none, 0 },
        { "IntegerField { defaultValue: 3 }"_s, std::nan(""), 3, none, QJsonValue::Null, 3 },
        { price, "0.1"_s, 0.5, 0.5, 0, 0.5 },
        { price, std::nan(""), 0.5, 0.5, none, 0.5 },
        { price, QVariantList(), 0.5, 0.5, true, 0.5 },
        { "FloatField { defaultValue: 0.3 }"_s, 0.1 + 0.2, 0.1 + 0.2, none, "1"_s, 0.3 },
        { "FloatField { maximum: Infinity }"_s, qInf(), qInf(), none, huge, huge },
        { color, "#80102031"_s, QColor(0x10, 0x20, 0x31, 0x80), "#102031"_s, "red"_s,
          QColor(Qt::red) },
        { color, "reddish"_s, grey, none, 0xff0000, grey },
        { color, grey, grey, none, "#12"_s, grey },
        { "DateField {}"_s, "2024-02-29"_s, QDate(2024, 2, 29), "2024-02-29"_s, "2023-02-29"_s,
          noDate },
        { "DateField {}"_s, QDateTime(QDate(2024, 2, 29), QTime(23, 59)), QDate(2024, 2, 29),
          "2024-02-29"_s, 20240229, noDate },
        { "DateField {}"_s, true, QVariant(), none, none, noDate },
        { "StringField { defaultValue: 'x' }"_s, 12, "12"_s, "12"_s, 12, "x"_s },
        { "StringField { defaultValue: 'x' }"_s, QString(), QString(), QString(), QString(),
          QString() },
        { "StringField { defaultValue: 'x' }"_s, "x"_s, "x"_s, none, QJsonObject(), "x"_s },
    };
}

/// A struct of two texts, one of them aliased, and a number, which QML and others edit at random;
/// and what is known of it.
struct RandomLife
{
    explicit RandomLife(quint32 seed)
        : random(seed)
    {
        object->setDocument(station());
        QObject::connect(object.get(), &DataStruct::canCommitChanged,
                         [this] { told = object->canCommit(); });
    }

    [[nodiscard]] Station *station() const { return context->find(id); }
    [[nodiscard]] QJsonObject stored() const { return station()->getStruct(object->key()); }
    [[nodiscard]] QVariant inQml(const QString &key) const { return object->data()->value(key); }

    void act()
    {
        const QString name = "title count note"_l.at(random.bounded(3));
        const QVariant value = random.bounded(4); // 2 is the default of the number
        const QVariant fitting = name == "count"_s ? value : QVariant(value.toString());
        const std::function<void()> acts[] {
            [&] { edit(name, value, fitting); },
            [&] { edit(name, value, fitting); },
            [&] { commit(); },
            [&] { edits.clear(), object->revert(); },
            [&] {
                if (station()->setStructValue(object->key(), name,
                                              QJsonValue::fromVariant(fitting))) {
                    edits.remove(name);
                }
            },
            [&] {
                edits.clear(), station()->setStruct(object->key(), { { name, 1 } });
            },
            [&] { rekey(value.toString()); },
            [&] { station()->deleteStruct(object->key()) ? edits.clear() : void(); },
        };
        acts[random.bounded(int(std::size(acts)))]();
    }

    void rekey(const QString &key)
    {
        if (key != object->key()) {
            edits.clear(), object->setKey(key);
        }
    }

    void edit(const QString &name, const QVariant &value, const QVariant &fitting)
    {
        const QString key = name == "note"_s ? "remark"_s : name;
        if (inQml(key) != value) { // or the map does not hear of it
            object->data()->setProperty(key.toLatin1().constData(), value);
            edits.insert(name, fitting);
        }
    }

    void commit()
    {
        QJsonObject expected = stored();
        for (auto it = edits.begin(); it != edits.end(); ++it) {
            const bool isDefault =
                it.value() == (it.key() == "count"_s ? QVariant(2) : QVariant("?"_s));
            expected.insert(it.key(), QJsonValue::fromVariant(it.value()));
            if (isDefault || it.key() == "note"_s) { // nothing stands under its name
                expected.remove(it.key());
            }
        }
        wasRight &= !edits.isEmpty() == object->canCommit();
        object->commit();
        wasRight &= stored() == expected;
        if (edits.remove("note"_s) > 0) {
            object->setDocument(nullptr), object->setDocument(station()); // shows it again
        }
        edits.clear();
    }

    [[nodiscard]] bool isRight() const
    {
        const QVariant title = stored().value("title"_s).toString("?"_s);
        const QVariant note = stored().value("note"_s).toString();
        const QVariant count = stored().value("count"_s).toInt(2);
        return wasRight && told == !edits.isEmpty()
            && inQml("title"_s) == edits.value("title"_s, title)
            && inQml("count"_s) == edits.value("count"_s, count)
            && inQml("remark"_s) == edits.value("note"_s, note);
    }

    QRandomGenerator random;
    const QString id = "a"_s;
    QQmlEngine engine;
    std::unique_ptr<TestContext> context = [] {
        auto made = std::make_unique<TestContext>();
        made->load("a"_s);
        return made;
    }();
    std::unique_ptr<DataStruct> object =
        make<DataStruct>(engine,
                         "DataStruct { key: '0'; StringField { name: 'title'; defaultValue: '?' }"
                         "IntegerField { name: 'count'; defaultValue: 2 }"
                         "StringField { name: 'note'; alias: 'remark' } }"_s);
    QVariantMap edits;
    bool told = false;
    bool wasRight = true;
};

} // namespace

class tst_DataStruct : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void fieldsConvertStoreAndReadValues()
    {
        QQmlEngine engine;
        TestContext context;
        Station *station = context.create();
        for (const Row &row : rows()) {
            const auto field = make<DataField>(engine, row.field);
            field->setName("member"_s);
            const QVariant converted = field->convert(row.value);
            const auto tag = qPrintable(row.field + ": "_s + row.value.toString());
            const bool isSame =
                !row.converted.isValid() || field->compare(converted, row.converted);
            QVERIFY2(converted.userType() == row.converted.userType() && isSame, tag);
            station->setStruct("s"_s, { { "member"_s, "old"_s } });
            field->write(station, "s"_s, converted);
            QVERIFY2(station->getStructValue("s"_s, "member"_s) == row.stored, tag);
            station->setStruct("s"_s, { { "member"_s, row.json } });
            const QVariant read = field->read(station, "s"_s);
            QVERIFY2(!row.read.isValid() || read == row.read, tag);
            QVERIFY2(!row.read.isValid() || read.userType() == row.read.userType(), tag);
            field->write(nullptr, "s"_s, converted);
            QVERIFY(!field->read(nullptr, "s"_s).isValid());
        }
    }

    void aReferenceFieldHoldsDocumentsThatFit()
    {
        QQmlEngine engine;
        auto context = std::make_unique<TestContext>();
        Station *a = context->load("a"_s);
        Station *b = context->load("b"_s, R"({"next": "a"})"_json);
        LinkedDocument *tag = LinkedDocument::create("tag"_s, "t"_s, context.get());
        const auto object =
            make<DataStruct>(engine,
                             "DataStruct { key: 's'; DocumentReferenceField { name: 'next';"
                             "acceptedTypes: ['station'] } }"_s);
        object->setDocument(a);
        const auto write = [&](const QVariant &value) {
            object->data()->setProperty("next", value);
            object->commit();
            return a->getStruct("s"_s).value("next"_s).toString();
        };
        const auto shown = [&] { return object->data()->value("next"_s); };
        QCOMPARE(write(QVariant::fromValue<LinkedDocument *>(tag)), QString());
        QCOMPARE(write(QVariant::fromValue(a)), QString()); // a circle
        QVERIFY(!shown().isValid());
        QCOMPARE(write(QVariant::fromValue(b)), QString()); // also one
        object->setDocument(b);
        object->data()->setProperty("next", QVariant::fromValue(a));
        QVERIFY(object->canCommit() && shown().value<LinkedDocument *>() == a);
        object->commit();
        QVERIFY(b->hasReference(a));
        // Nothing that QML can read dangles.
        auto *c = context->create();
        object->data()->setProperty("next", QVariant::fromValue(c));
        delete c;
        QVERIFY(!shown().value<LinkedDocument *>());
        object->revert();
        context.reset();
        QVERIFY(!object->document() && !shown().value<LinkedDocument *>());
        processEvents();
        QVERIFY(!object->canCommit() && !shown().isValid());
    }

    void randomStepsLeadWhereTheyHaveTo()
    {
        const QString other = QString::number(QRandomGenerator::global()->generate());
        const quint32 seed = qEnvironmentVariable("VORREL_TEST_SEED", other).toUInt();
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        RandomLife life(seed);
        for (int step = 0; step < steps; ++step) {
            life.act();
            if (!life.isRight())
                qDebug() << step << life.stored() << life.edits << life.inQml("title"_s)
                         << life.inQml("count"_s) << life.inQml("remark"_s) << life.wasRight
                         << life.told;
            QVERIFY2(life.isRight(), qPrintable("VORREL_TEST_SEED=%1"_s.arg(seed)));
        }
    }

    /// Whatever ends inside of whatever signal: nothing crashes, and recording ends.
    void anythingMayEndAnywhere()
    {
        QQmlEngine engine;
        for (const QByteArray &signal : signalNames(DataStruct::staticMetaObject)
                 + QList<QByteArray> { "structValueChanged", "editedChanged" }) {
            for (int victim = 0; victim < 4; ++victim) {
                TestContext context;
                QPointer<Station> station(context.load("a"_s));
                QPointer<DataStruct> object(
                    make<DataStruct>(engine,
                                     "DataStruct { StringField { name: 'x' } StringField { name: "
                                     "'y'; alias: 'z' } }"_s)
                        .release());
                object->setDocument(station), object->setKey("s"_s);
                const bool isOfStruct =
                    !QByteArrayList { "structValueChanged", "editedChanged" }.contains(signal);
                bool done = false;
                const auto end = [&] {
                    if (!std::exchange(done, true)) {
                        victim == 0       ? delete object.data()
                            : victim == 1 ? delete station.data()
                            : victim == 2 ? qDeleteAll(object->findChildren<DataField *>())
                                          : object->setKey("t"_s);
                    }
                };
                QObject *sender = isOfStruct ? static_cast<QObject *>(object) : station.data();
                object->data()->setProperty("x", 1), object->data()->setProperty("z", 2);
                const SignalHook hook(sender, signal, end);
                const std::function<void()> acts[] {
                    [&] { object->commit(); },
                    [&] { object->data()->setProperty("x", victim > 0 ? 3 : 1), object->revert(); },
                    [&] {
                        station->setStruct("s"_s, { { "x"_s, "5"_s } });
                    },
                    [&] { object->findChild<DataField *>()->setName("other"_s); },
                    [&] { object->findChild<DataField *>()->setAlias("more"_s); },
                    [&] { object->removeField(object->findChild<DataField *>()); },
                    [&] { object->setDocument(nullptr); },
                };
                for (const auto &act : acts) {
                    if (object && station && object->findChild<DataField *>()) {
                        act();
                    }
                }
                QVERIFY(!context.recording);
                delete object;
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_DataStruct)
#include "tst_datastruct.moc"
