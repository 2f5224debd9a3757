// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/exhibit.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/data/documents/product.h>
#include <vorrel/data/schema/schema.h>
#include <vorrel/data/schema/schemadata.h>
#include <vorrel/data/schema/schemaenumerationvariable.h>
#include <vorrel/data/schema/schemaintegervariable.h>
#include <vorrel/data/schema/schemarealvariable.h>
#include <vorrel/data/schema/schemastringvariable.h>

#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

class tst_Schemas : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<TestContext>();
        registerExhibits();
        m_schema = m_context->create<Schema>("schema"_s);
        m_store = addStore("exhibit"_s);
    }

    void eachVariableKeepsItsPromises_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("json");
        const auto row = [](const char *type, const QVariant &value, const char *json) {
            QTest::newRow(type) << QString::fromLatin1(type) << value
                                << QString::fromUtf8(json).replace("'"_s, "\""_s);
        };
        row("boolean", true, "'boolean': true");
        row("color", QColor(Qt::red), "'color': '#ff0000'");
        row("date", QDate(2027, 5, 31), "'date': '2027-05-31'");
        row("time", QTime(18, 30), "'time': '18:30:00'");
        row("integer", qlonglong(-42), "'integer': -42");
        row("real", 2.5, "'real': 2.5");
        row("string", "Öl"_s, "'string': {'type': 'langstring', 'items': {'de': 'Öl'}}");
        row("url", QUrl("http://a.test/b"_s), "'url': 'http://a.test/b'");
        row("enumeration", 1, "'index': 1");
        row("documentlink", "station"_s, "'documentLink': 'target'");
        row("productlink", "product"_s, "'product': 'target'");
        row("medialink", "asset:image"_s, "'media': 'target'");
    }
    void eachVariableKeepsItsPromises()
    {
        QFETCH(QString, type);
        QFETCH(QVariant, value);
        QFETCH(QString, json);
        const bool links = type.endsWith("link"_s);
        if (links) {
            value = QVariant::fromValue<QObject *>(
                LinkedDocument::create(value.toString(), "target"_s, m_context.get()));
        }
        QJsonObject stored = QJsonDocument::fromJson(("{%1}"_s.arg(json)).toUtf8()).object();
        const QString key = stored.keys().constFirst();
        stored.insert("type"_s, "schemavalue:"_s + type);
        SchemaVariable *variable = add(type, "some"_s);
        if (auto *enumeration = qobject_cast<SchemaEnumerationVariable *>(variable)) {
            QVERIFY(enumeration->addEntry("first"_s) && enumeration->addEntry("second"_s));
        }

        QVERIFY(variable->valuesEqual(variable->fromJson(stored), value));
        QCOMPARE(variable->toJson(variable->fromJson(stored)), stored);
        const QVariant initial = variable->defaultValue();
        for (const QJsonValue &wrong :
             { QJsonValue("?"_s), QJsonValue(true), QJsonValue(1.5), QJsonValue(QJsonArray { 1 }),
               QJsonValue::fromVariant({}), QJsonValue(QJsonObject { { "items"_s, 1 } }) }) {
            if (wrong.type() == stored.value(key).type() && wrong != "?"_s) {
                continue;
            }
            const LogCapture log;
            const QVariant read = variable->fromJson({ { key, wrong } });
            const bool isText = type == "url"_s && wrong == "?"_s;
            QVERIFY(isText || variable->valuesEqual(read, initial));
            const bool quiet = isText || (links && (wrong.isNull() || wrong.isString()));
            QCOMPARE(log.count("is no value of the variable"_s), quiet ? 0 : 1);
        }

        m_context->recording = true;
        QVERIFY(m_store->setValue(variable, value) && !m_store->setValue(variable, value));
        QVERIFY(variable->valuesEqual(m_store->value(variable), value));
        const QJsonObject values { { variable->uuid(), stored } };
        QCOMPARE(m_store->serialize().value("values"_s).toObject(), values);
        QSet<QString> ids;
        m_store->aggregateReferences(ids);
        QCOMPARE(ids.contains("target"_s), links);
        if (!links) {
            QSignalSpy changed(variable, &SchemaVariable::defaultValueChanged);
            QVERIFY(
                variable->setProperty(type == "enumeration"_s ? "index" : type.toLatin1(), value));
            QVERIFY(changed.count() == 1 && variable->valuesEqual(variable->defaultValue(), value));
        }
        m_context->undo();
        QVERIFY(variable->valuesEqual(variable->defaultValue(), initial));
        QVERIFY(variable->valuesEqual(m_store->value(variable), initial));
        QVERIFY(m_store->serialize().value("values"_s).toObject().isEmpty());
        m_context->redo();
        QCOMPARE(m_store->serialize().value("values"_s).toObject(), values);
        // What cannot be a value is none: the default one is back.
        for (const QVariant &rubbish : { QVariant(), QVariant::fromValue<QObject *>(m_schema) }) {
            m_store->setValue(variable, rubbish);
            QVERIFY(m_store->value(variable).isValid());
        }
    }

    void valuesAreMadeToFit()
    {
        auto *integer = static_cast<SchemaIntegerVariable *>(add("integer"_s, "number"_s));
        QVERIFY(integer->setInteger(5) && integer->setMaximum(3) && !integer->setMaximum(3));
        QVERIFY(integer->integer() == 3 && !integer->setInteger(99) && integer->isMaximum(3));
        QVERIFY(integer->setMaximum(-7) && integer->setMinimum(-9) && integer->setInteger(-99));
        QVERIFY(integer->minimum() == -9 && integer->integer() == -9 && integer->setMinimum(0));
        QVERIFY(integer->maximum() == 0 && integer->integer() == 0);
        integer->resetMinimum();
        integer->resetMaximum();
        QCOMPARE(integer->sanitize(1e300).toLongLong(), 2147483647LL);
        QCOMPARE(integer->sanitize(qQNaN()).toLongLong() + integer->sanitize("x"_s).toLongLong(),
                 0);
        auto *real = static_cast<SchemaRealVariable *>(add("real"_s, "weight"_s));
        QVERIFY(!real->setReal(qQNaN()) && real->setReal(4) && real->setMaximum(0.5));
        QVERIFY(real->minimum() < -1e308 && real->decimals() == 2 && real->real() == 0.5);
        QCOMPARE(real->sanitize(qInf()).toDouble() + real->sanitize(qQNaN()).toDouble(), 0.5);

        auto *text = static_cast<SchemaStringVariable *>(add("string"_s, "text"_s));
        QCOMPARE(text->sanitize("a\r\nb\rc\nd"_s).toString(), "a b c d"_s);
        QVERIFY(text->setMultiline(true) && text->sanitize("a\r\nb"_s) == "a\r\nb"_s);
        auto *choice = static_cast<SchemaEnumerationVariable *>(add("enumeration"_s, "choice"_s));
        QCOMPARE(choice->sanitize(3).toInt(), -1);
        SchemaEnumerationEntry *entry = choice->addEntry("only"_s);
        QVERIFY(choice->sanitize(3) == 0 && choice->sanitize(-3) == -3
                && choice->removeEntry(entry));
        const SchemaVariable *media = add("medialink"_s, "photo"_s);
        QObject *font = m_context->createDocument("asset"_s);
        QVERIFY(!media->sanitize(QVariant::fromValue(font)).isValid());
        TestContext elsewhere;
        const auto far = QVariant::fromValue<QObject *>(elsewhere.create());
        QVERIFY(!m_store->setValue(add("documentlink"_s, "link"_s), far));
        const QJsonObject older { { "productLink"_s, "p"_s }, { "product"_s, 7 } };
        auto *product = m_context->create<Product>("p"_s);
        const SchemaVariable *link = add("productlink"_s, "sold"_s);
        QCOMPARE(link->fromJson(older).value<Product *>(), product);

        const LogCapture log;
        for (const QString &symbol : { "ab"_s, "Abc"_s, "a"_s.repeated(65), "abc\n"_s, "a-b"_s }) {
            QVERIFY(!text->setSymbol(symbol)
                    && log.contains(symbol + " is not a valid symbolic name"_s));
        }
        QVERIFY(text->setSymbol("a"_s.repeated(64)) && text->setSymbol("abc"_s));
        QVERIFY(m_schema->variableByName("text"_s) && !m_schema->variableByName("abc"_s));
        QVERIFY(m_schema->removeVariable(text) && m_schema->insertVariable(text, 0));
        QVERIFY(m_schema->variableByName("abc"_s) == text && m_schema->variables().first() == text);
        QVERIFY(!m_schema->insertVariable("colorswatch"_s) && !m_schema->insertVariable("?"_s));
    }

    // The database has the schema, a linked product and the document, none of which is built.
    void storedValuesComeWithTheirSchema()
    {
        add("string"_s, "motto"_s);
        add("productlink"_s, "sold"_s);
        m_store->data()->setProperty("motto", "Go"_s);
        m_store->data()->setProperty(
            "sold", QVariant::fromValue<QObject *>(m_context->create<Product>("p"_s)));
        QCOMPARE(m_store->data()->value("motto"_s), "Go"_s);
        const QJsonObject schema = m_schema->serialize();
        const QJsonObject document = m_context->loadedDocument("exhibit"_s)->serialize();
        QCOMPARE(document["references"_s].toArray().size(), 2);

        TestContext other;
        other.addDocumentNode("p", R"({"_id": "p", "type": "product"})"_json);
        other.addDocumentNode("schema", schema);
        other.addDocumentNode("exhibit", document);
        auto *exhibit = qobject_cast<Exhibit *>(other.loadedDocument("exhibit"_s));
        QCOMPARE(exhibit->serialize()["values"_s], document["values"_s]);
        QCOMPARE(exhibit->values()->data()->value("sold"_s).value<Product *>(),
                 other.loadedDocument("p"_s));
        QVERIFY(!exhibit->isDirty());
        auto *copy = qobject_cast<Exhibit *>(exhibit->copy());
        QCOMPARE(copy->serialize()["values"_s], document["values"_s]);

        // A newer schema lacks a variable; its value is not stored any more.
        QSignalSpy keys(exhibit->values(), &SchemaValueStore::dataChanged);
        auto *read = exhibit->values()->schema();
        QVERIFY(read->removeVariable(read->variableByName("motto"_s)));
        QVERIFY(read->insertVariable("schemavariable:boolean"_s, "given"_s)->uuid() == "given"_s);
        QCOMPARE(exhibit->values()->serialize()["values"_s].toObject().size(), 1);
        read->variableByUuid("given"_s)->setSymbol("glad"_s);
        read->reload(read->serialize());
        other.finishIncubation();
        processEvents();
        QVERIFY(keys.count() == 1 && exhibit->values()->data()->contains("glad"_s));
        QCOMPARE(exhibit->values()->serialize()["values"_s].toObject().size(), 1);

        // Without its schema the values are dropped, with a line that says so.
        const LogCapture log;
        TestContext third;
        third.addDocumentNode("exhibit", document);
        exhibit = qobject_cast<Exhibit *>(third.loadedDocument("exhibit"_s));
        QVERIFY(log.contains("Document exhibit: 2 values are dropped"_s));
        QVERIFY(!exhibit->serialize()["values"_s].toObject().contains("values"_s));
    }

    void linksEndWithTheirDocuments()
    {
        SchemaVariable *sold = add("productlink"_s, "sold"_s);
        auto *product = m_context->create<Product>("p"_s);
        m_context->recording = true;
        m_store->setValue(sold, QVariant::fromValue(product));
        QCOMPARE(product->referencingDocuments(), QList<Document *> { m_store });
        product->remove();
        QVERIFY(!m_store->hasValue(sold) && product->referencingDocuments().isEmpty());
        m_context->undo();
        m_context->redo();
        m_context->changes.clear();
        QVERIFY(product->deleted() && !m_store->hasValue(sold));
        // Whoever may not edit the store keeps the link until the document is gone.
        auto *other = m_context->create<Product>("q"_s);
        m_store->setValue(sold, QVariant::fromValue(other));
        m_context->setLevel("exhibit"_s, Document::ReadAccess);
        processEvents();
        m_store->parentDocument()->markClean("1-a"_s, m_store->changeSequenceNumber(), {});
        processEvents();
        QVERIFY(!m_store->setValue(sold, QVariant()));
        m_context->removeDocument("q"_s);
        processEvents();
        QVERIFY(!m_store->hasValue(sold) && !m_store->value(sold).value<Product *>());
        m_context->undo();
        // A circle can be stored by others; it does no harm.
        SchemaValueStore *round = addStore("round"_s);
        round->setValue(add("documentlink"_s, "self"_s),
                        QVariant::fromValue(m_context->loadedDocument("round"_s)));
        QTest::qWait(150); // until the graph follows
        QVERIFY(!m_context->loadedDocument("round"_s)->serialize().isEmpty());
    }

    void storesOfOneSchemaCopyFromEachOther()
    {
        SchemaVariable *link = add("documentlink"_s, "link"_s);
        SchemaValueStore *other = addStore("other"_s);
        other->setValue(link, QVariant::fromValue<Document *>(m_schema));
        m_context->recording = true;
        m_store->copyFrom(other);
        QCOMPARE(m_store->value(link).value<Document *>(), m_schema);
        m_context->undo();
        QVERIFY(!m_store->hasValue(link));
        other->clearValue(link);
        QVERIFY(m_schema->referencingDocuments().size() == 2);
        QSignalSpy stores(m_schema, &Schema::valueStoresChanged);
        QVERIFY(other->setSchema(nullptr) && stores.count() == 1);
        other->copyFrom(m_store);
        QVERIFY(!other->setValue(link, QVariant::fromValue<Document *>(m_schema)));
        QCOMPARE(other->serialize(), R"({"type": "exhibitvalues", "schema": null})"_json);
        const SchemaValueStore untyped(m_schema);
        QCOMPARE(untyped.type(), QString());
    }

private:
    SchemaValueStore *addStore(const QString &id)
    {
        SchemaValueStore *store = m_context->create<Exhibit>(id)->values();
        return store->setSchema(m_schema) ? store : nullptr;
    }

    SchemaVariable *add(const QString &type, const QString &symbol)
    {
        SchemaVariable *variable = m_schema->insertVariable("schemavariable:"_s + type);
        variable->setSymbol(symbol);
        const bool again = m_schema->removeVariable(variable) && m_schema->insertVariable(variable);
        return again ? variable : nullptr;
    }

    std::unique_ptr<TestContext> m_context;
    Schema *m_schema = nullptr;
    SchemaValueStore *m_store = nullptr;
};

QTEST_GUILESS_MAIN(tst_Schemas)
#include "tst_schemas.moc"
