// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/signalhook.h"
#include "support/testdocuments.h"

#include <vorrel/data/custom/customdata.h>
#include <vorrel/data/custom/datastruct.h>
#include <vorrel/data/custom/valuedatafield.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A field, a value, a stored value; what the value is brought to, what is stored of that, and what
/// the stored value reads as.
const char *const fieldTable =
    R"(BooleanField {}|true|'true'|bool true, true, bool false
BooleanField { defaultValue: true }|undefined|0|bool true, , bool true
IntegerField { minimum: 10; maximum: 1; defaultValue: 5 }|12|11|int 10, 10, int 10
IntegerField { minimum: 10; maximum: 1; defaultValue: 50 }|'many'|7.5|int 10, 10, int 10
IntegerField {}|1e300|1e300|int 2147483647, 2147483647, int 0
IntegerField { defaultValue: 3 }|NaN|null|int 3, , int 3
FloatField { minimum: 0.5; defaultValue: 0.25 }|'0.1'|0|double 0.5, 0.5, double 0.5
FloatField { defaultValue: 0.3 }|0.1 + 0.2|'1'|double 0.30000000000000004, , double 0.3
FloatField { defaultValue: 7 }|NaN|1e300|double 7, , double 1e+300
FloatField { maximum: Infinity }|Infinity|undefined|double inf, , double 0
ColorField { defaultValue: '#102030' }|'#80102031'|'red'|QColor #80102031, #102031, QColor #ff0000
ColorField { defaultValue: '#102030' }|'reddish'|0xff0000|QColor #102030, , QColor #102030
DateField {}|'2024-02-29'|'2023-02-29'|QDate 2024-02-29, 2024-02-29, QDate 
DateField {}|new Date(2024, 1, 29, 23, 59)|20240229|QDate 2024-02-29, 2024-02-29, QDate 
StringField { defaultValue: 'x' }|12|12|QString 12, 12, QString x
StringField { defaultValue: 'x' }|'x'|{}|QString x, , QString x)";

QString describe(const QVariant &value)
{
    return QLatin1String(value.typeName()) + " "_s + value.toString();
}

template <typename T>
std::unique_ptr<T> make(QQmlEngine &engine, const QString &text)
{
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nimport vorrel.data.Core 1.0\n" + text.toUtf8(), {});
    return std::unique_ptr<T>(qobject_cast<T *>(component.create()));
}

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
        for (const QString &row : QString::fromLatin1(fieldTable).split(QLatin1Char('\n'))) {
            const QStringList cells = row.split(QLatin1Char('|'));
            const auto value = [&](int cell) {
                return engine.evaluate("("_s + cells[cell] + ")"_s);
            };
            const auto field = make<ValueDataField>(engine, cells[0]);
            field->setName("member"_s);
            const QVariant converted = field->convert(value(1).toVariant());
            field->write(station, "s"_s, converted);
            const QVariant stored = station->getStructValue("s"_s, "member"_s).toVariant();
            const auto json = engine.fromScriptValue<QJsonValue>(value(2));
            station->setStructValue("s"_s, "member"_s, json);
            const QString read = describe(field->read(station, "s"_s));
            QCOMPARE(cells.mid(0, 3).join(QLatin1Char('|'))
                         + "|%1, %2, %3"_s.arg(describe(converted), stored.toString(), read),
                     row);
        }
    }

    void aReferenceFieldHoldsDocumentsThatFit()
    {
        QQmlEngine engine;
        auto context = std::make_unique<TestContext>();
        Station *a = context->load("a"_s);
        Station *b = context->load("b"_s, R"({"next": "a"})"_json);
        const auto object = make<DataStruct>(engine,
                                             "DataStruct { key: 's'; DocumentReferenceField {"
                                             "name: 'next'; acceptedTypes: ['station'] } }"_s);
        const auto write = [&](LinkedDocument *document, LinkedDocument *target) {
            object->setDocument(document);
            object->data()->setProperty("next", QVariant::fromValue(target));
            object->commit();
            return document->getStruct("s"_s).value("next"_s).toString();
        };
        const auto shown = [&] { return object->data()->value("next"_s); };
        QVERIFY(write(a, LinkedDocument::create("tag"_s, context.get())).isEmpty());
        QVERIFY(shown().isValid() && write(a, b).isEmpty() && !shown().isValid());
        QVERIFY(write(b, a) == "$ref(0,a)"_s && b->hasReference(a));
        auto *gone = context->create();
        object->data()->setProperty("next", QVariant::fromValue(gone));
        delete gone;
        QVERIFY(object->canCommit() && !shown().value<LinkedDocument *>());
        context.reset();
        processEvents();
        QVERIFY(!object->document() && !object->canCommit() && !shown().isValid());
    }

    void anythingMayEndWithinASignal()
    {
        QQmlEngine engine;
        const QList<QByteArray> ofDocument { "structValueChanged", "editedChanged" };
        for (const QByteArray &signal : signalNames(DataStruct::staticMetaObject) + ofDocument) {
            for (int victim = 0; victim < 4; ++victim) {
                TestContext context;
                const QPointer<QObject> station(context.load("a"_s));
                const auto text = "DataStruct { key: 's'; StringField { name: 'x' }"
                                  "StringField { name: 'y'; alias: 'z' } }"_s;
                const QPointer<DataStruct> object(make<DataStruct>(engine, text).release());
                object->setDocument(context.find("a"_s));
                object->data()->setProperty("x", 1), object->data()->setProperty("z", 2);
                const auto field = [&] { return object->findChild<DataField *>(); };
                const std::function<void()> acts[] {
                    [&] { object->commit(); },
                    [&] { object->revert(); },
                    [&] {
                        context.find("a"_s)->setStruct("s"_s, { { "x"_s, "5"_s } });
                    },
                    [&] { field()->setName("other"_s); },
                    [&] { field()->setAlias("more"_s); },
                    [&] { object->removeField(field()); },
                    [&] { object->setDocument(nullptr); },
                    [&] { delete object.data(); },
                    [&] { delete station.data(); },
                    [&] { qDeleteAll(object->findChildren<DataField *>()); },
                    [&] { object->setKey("t"_s); },
                };
                const auto *sender = ofDocument.contains(signal) ? station.data() : object.data();
                const SignalHook hook(sender, signal, [&, done = false]() mutable {
                    std::exchange(done, true) ? void() : acts[7 + victim]();
                });
                for (int act = 0; act < 7 && object && station && field(); ++act) {
                    acts[act]();
                }
                QVERIFY(!context.recording);
                delete object;
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_DataStruct)
#include "tst_datastruct.moc"
