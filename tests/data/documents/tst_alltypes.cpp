// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"

#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/documents/catalogitem.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/keyvaluestore.h>
#include <vorrel/data/documents/location.h>
#include <vorrel/data/documents/tag.h>
#include <vorrel/data/module/registration.h>
#include <vorrel/data/properties/langstring.h>

#include <QtCore/QJsonArray>
#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// Undefined for a type that has no sample yet, null for links to other documents.
QJsonValue sampleJson(const Document &document, const QMetaProperty &property)
{
    static const auto coordinate = R"({"lat": 48.2, "lon": 16.37})"_json;
    static const auto texts = R"({"de": "a text"})"_json;
    static const QHash<QByteArray, QJsonValue> samples {
        { "QString", "a text"_s },
        { "QUrl", "http://a.test/b"_s },
        { "QStringList", QJsonArray { "a"_s, "b"_s } },
        { "QJsonArray", QJsonArray { "#ff0000"_s } },
        { "QJsonObject", coordinate },
        { "QGeoCoordinate", coordinate },
        { "double", 2.5 },
    };
    const QByteArray type = property.typeName();
    if (type.endsWith('*') || type.startsWith("QQmlListProperty")) {
        return QJsonValue::Null;
    }
    if (qobject_cast<const LangString *>(&document)) {
        return texts;
    }
    if (qobject_cast<const CatalogItem *>(&document) && type == "QString") {
        return QJsonObject { { "type"_s, "langstring"_s }, { "items"_s, texts } };
    }
    return samples.value(type, QJsonValue::Undefined);
}

/// A new document of a linked or an inline type.
Document *make(const QString &type, Context *context)
{
    auto *parent = LinkedDocument::create("tag"_s, context);
    Document *document = InlineDocument::create(type, parent);
    return document ? document : LinkedDocument::create(type, context);
}

/// The stored properties of a class, without those that every document has.
QList<QMetaProperty> storedProperties(const Document &document)
{
    const QMetaObject &base = qobject_cast<const LinkedDocument *>(&document)
        ? LinkedDocument::staticMetaObject
        : InlineDocument::staticMetaObject;
    QList<QMetaProperty> properties;
    for (int index = base.propertyCount(); index < document.metaObject()->propertyCount();
         ++index) {
        const QMetaProperty property = document.metaObject()->property(index);
        if (property.isStored()) {
            properties += property;
        }
    }
    return properties;
}

} // namespace

class tst_AllTypes : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { _vo_data_registerTypesdata_core(); }

    void eachTypeKeepsItsPromises_data()
    {
        QTest::addColumn<QString>("type");
        const auto &types = TypeRegistry::instance().documentTypes();
        for (auto it = types.begin(); it != types.end(); ++it) {
            if (QByteArray(it.value()->className()).startsWith("vo::data::")) {
                QTest::newRow(qPrintable(it.key()))
                    << (it.key() == "data"_s ? "data:some:thing"_s : it.key());
            }
        }
    }
    void eachTypeKeepsItsPromises()
    {
        QFETCH(QString, type);
        Document *document = make(type, m_context.get());
        Document *other = make(type, m_context.get());
        QVERIFY(document);
        QVERIFY(other);
        auto *linked = qobject_cast<LinkedDocument *>(document);
        QVERIFY(!linked || !linked->typeName().isEmpty());
        const QList<QMetaProperty> properties = storedProperties(*document);
        const QStringList keys = document->Document::serialize().keys();
        const int common = linked ? 3 : 1; // "type", and for linked ones "deleted" and "label"
        QCOMPARE(int(keys.size()), int(properties.size()) + common);

        QJsonObject json = document->serialize();
        for (const QMetaProperty &property : properties) {
            const QString name = QString::fromLatin1(property.name());
            const QJsonValue sample = sampleJson(*document, property);
            QVERIFY2(!sample.isUndefined(), property.typeName()); // needs a sample above
            QVERIFY2(keys.contains(name), property.name());
            QVERIFY2(property.isConstant() || property.hasNotifySignal(), property.name());
            if (sample.isNull()) {
                continue;
            }
            std::unique_ptr<QSignalSpy> told;
            if (property.hasNotifySignal()) {
                told = std::make_unique<QSignalSpy>(document, property.notifySignal());
            }
            json.insert(name, sample);
            document->assignData(json);
            QVERIFY2(!told || told->count() == 1, property.name());
            QVERIFY2(property.read(document) != property.read(other), property.name());
            if (property.isWritable()) {
                QVERIFY(property.write(other, property.read(document)));
                QCOMPARE(other->serialize().value(name), sample);
            }
        }
        QCOMPARE(document->serialize(), json);
        if (linked) {
            QCOMPARE(document->changeSequenceNumber(), 1);
            Context elsewhere;
            QCOMPARE(LinkedDocument::create(json, &elsewhere)->serialize(), json);
            QCOMPARE(linked->copy()->Document::serialize(), document->Document::serialize());
        }
    }

    void tagFitsEveryDocument()
    {
        auto *tag = create<Tag>();
        tag->setApplicableTypes("device"_l);
        for (Document *document :
             { static_cast<Document *>(tag), static_cast<Document *>(nullptr) }) {
            QVERIFY(tag->appliesToType(document));
        }
    }

    void labelOfALocationIsNeverEmptied()
    {
        auto *location = create<Location>();
        location->setLabel(" \tVienna \n"_s);
        location->setLabel(" \n"_s);
        location->setProperty("label", QString());
        QCOMPARE(location->label(), "Vienna"_s);
    }

    void keyValueStoreHoldsJson_data()
    {
        const QVariantMap map { { "a"_s, QVariantList { 1, QVariant() } } };
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QJsonValue>("json");
        QTest::newRow("number") << QVariant(1.5) << QJsonValue(1.5);
        QTest::newRow("text") << QVariant("a"_s) << QJsonValue("a"_s);
        QTest::newRow("bool") << QVariant(false) << QJsonValue(false);
        QTest::newRow("nothing") << QVariant() << QJsonValue();
        QTest::newRow("null") << QVariant::fromValue(nullptr) << QJsonValue();
        QTest::newRow("nested") << QVariant(map) << QJsonValue(R"({"a": [1, null]})"_json);
        QTest::newRow("URL") << QVariant(QUrl("http://a.test"_s)) << QJsonValue("http://a.test"_s);
        QTest::newRow("object") << QVariant::fromValue<QObject *>(this) << QJsonValue();
        QTest::newRow("list of objects")
            << QVariant(QVariantList { QVariant::fromValue<QObject *>(this) })
            << QJsonValue(QJsonArray { QJsonValue() });
    }
    void keyValueStoreHoldsJson()
    {
        QFETCH(QVariant, value);
        QFETCH(QJsonValue, json);
        auto *store = create<KeyValueStore>();
        QVERIFY(store->setValue("k"_s, value));
        QVERIFY(!store->setValue("k"_s, value));
        QCOMPARE(store->data(), (QJsonObject { { "k"_s, json } }));
        // What is read back is what another program will read.
        const auto *loaded = load<KeyValueStore>({ { "data"_s, store->data() } });
        QCOMPARE(loaded->value("k"_s).userType(), store->value("k"_s).userType());
        QCOMPARE(loaded->value("k"_s), store->value("k"_s));
    }

    void keyValueStoreIsEditedByKey()
    {
        auto *store = create<KeyValueStore>();
        const QSignalSpy changed(store, &KeyValueStore::dataChanged);
        QVERIFY(store->setValue("b"_s, 1));
        QVERIFY(store->setValue("a"_s, 2));
        QVERIFY(!store->setValue("a"_s, 2.0));
        QCOMPARE(store->keys(), "a b"_l);
        QVERIFY(!store->clearValue("c"_s));
        QVERIFY(store->clearValue("b"_s));
        QVERIFY(!store->value("b"_s).isValid());
        QCOMPARE(changed.count(), 3);

        store->markClean("1-a"_s, store->changeSequenceNumber(), {});
        AccessContext::access(store).level = Document::NoAccess;
        m_context->updateAccessLevel();
        QTRY_VERIFY(store->keys().isEmpty());
        QVERIFY(store->data().isEmpty());
        QVERIFY(!store->value("a"_s).isValid());
        QVERIFY(!store->setValue("a"_s, 3));
        QVERIFY(!store->clearValue("a"_s));
    }

    void serialNumberIsNotEdited()
    {
        auto *device = load<Device>(R"({"serialNumber": "4711"})"_json);
        QVERIFY(!device->setProperty("serialNumber", "1"_s));
        QCOMPARE(device->serialNumber(), "4711"_s);
    }
};

QTEST_GUILESS_MAIN(tst_AllTypes)
#include "tst_alltypes.moc"
