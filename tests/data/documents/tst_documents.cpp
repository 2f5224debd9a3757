// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/contextfixture.h"
#include "support/literals.h"
#include "support/logcapture.h"
#include "support/testdocuments.h"

#include <vorrel/core/version.h>
#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/documents/colorpalette.h>
#include <vorrel/data/documents/colorswatch.h>
#include <vorrel/data/documents/country.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/keyvaluestore.h>
#include <vorrel/data/documents/language.h>
#include <vorrel/data/documents/product.h>
#include <vorrel/data/properties/langstring.h>

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QMetaProperty>
#include <QtPositioning/QGeoCoordinate>
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
        { "QString", "text"_s },
        { "QUrl", "http://a.test/b"_s },
        { "QJsonObject", coordinate },
        { "QStringList", QJsonArray { "a"_s, "b"_s } },
        { "QGeoCoordinate", coordinate },
        { "QJsonArray", QJsonArray { "#ff0000"_s } },
        { "QSize", QJsonArray { 3, 2 } },
        { "QColor", "#123456"_s },
        { "QDate", "2027-05-31"_s },
        { "QTime", "18:30:00"_s },
        { "double", 2.5 },
        { "float", 2.5 },
        { "int", 7 },
        { "qlonglong", 3 },
        { "bool", true }
    };
    const QByteArray type = property.typeName();
    if (type.endsWith('*') || type.startsWith("QQmlListProperty") || type == "QVariantMap") {
        return QJsonValue::Null;
    }
    if (document.attachment(QString::fromLatin1(property.name()))) {
        return "d41d8cd98f00b204e9800998ecf8427e"_s;
    }
    if (qobject_cast<const Country *>(&document)) {
        return "AT"_s;
    }
    if (qobject_cast<const LangString *>(&document)) {
        return texts;
    }
    if (qobject_cast<const CatalogItem *>(&document) && type == "QString") {
        return QJsonObject { { "type"_s, "langstring"_s }, { "items"_s, texts } };
    }
    return samples.value(type, QJsonValue::Undefined);
}

} // namespace

class tst_Documents : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_context = std::make_unique<TestContext>(); }

    void eachTypeKeepsItsPromises_data()
    {
        const Context registers;
        QTest::addColumn<QString>("type");
        const auto &types = TypeRegistry::instance().documentTypes();
        for (auto it = types.begin(); it != types.end(); ++it) {
            const QString type = it.key() == "data"_s ? "data:some:thing"_s : it.key();
            if (QByteArray(it.value()->className()).startsWith("vo::data::")) {
                QTest::newRow(qPrintable(type)) << type;
            }
        }
    }
    void eachTypeKeepsItsPromises()
    {
        QFETCH(QString, type);
        Document *document = make(type);
        Document *other = make(type);
        const bool linked = qobject_cast<LinkedDocument *>(document);
        const QMetaObject &base =
            linked ? LinkedDocument::staticMetaObject : InlineDocument::staticMetaObject;
        int count = linked ? 3 : 1; // "type", and for linked ones "deleted" and "label"
        QJsonObject json = document->serialize();
        for (int i = base.propertyCount(); i < document->metaObject()->propertyCount(); ++i) {
            const QMetaProperty property = document->metaObject()->property(i);
            if (!property.isStored()) {
                continue;
            }
            ++count;
            const QString name = QString::fromLatin1(property.name());
            const QJsonValue sample = sampleJson(*document, property);
            QVERIFY2(!sample.isUndefined(), property.typeName()); // needs a sample above
            QVERIFY2(property.isConstant() || property.hasNotifySignal(), property.name());
            if (sample.isNull()) {
                continue;
            }
            const QSignalSpy told(document, property.notifySignal());
            json.insert(name, sample);
            document->assignData(json);
            QVERIFY2(property.isConstant() || told.count() == 1, property.name());
            if (document->attachment(name)) {
                continue; // of a file that is nowhere
            }
            QVERIFY2(property.read(document) != property.read(other), property.name());
            if (property.isWritable()) {
                const QJsonValue former = other->serialize().value(name);
                m_context->recording = true;
                QVERIFY(property.write(other, property.read(document)));
                QCOMPARE(other->serialize().value(name), sample);
                m_context->undo();
                QCOMPARE(other->serialize().value(name), former);
                m_context->redo();
                QCOMPARE(other->serialize().value(name), sample);
                m_context->recording = false;
            }
        }
        QCOMPARE(document->Document::serialize().size(), count);
        QCOMPARE(document->serialize(), json);
        if (linked) {
            TestContext elsewhere;
            auto *loaded = LinkedDocument::create(json, &elsewhere);
            QCOMPARE(loaded->serialize(), json);
            QCOMPARE(loaded->copy()->Document::serialize(), document->Document::serialize());
        }
        respectsAccess(document, base.propertyCount());
    }

    /// Qt 5 does not know how to compare coordinates in variants.
    static bool isSame(const QVariant &a, const QVariant &b)
    {
        return a == b
            || (a.canConvert<QGeoCoordinate>()
                && a.value<QGeoCoordinate>() == b.value<QGeoCoordinate>());
    }

    /// What it holds cannot be read without ReadAccess, nor written without WriteAccess.
    void respectsAccess(Document *document, int firstProperty)
    {
        Document *empty = make(document->type());
        for (LinkedDocument *each : m_context->dirtyDocuments()) {
            each->markClean("1-x"_s, each->changeSequenceNumber(), {});
        }
        const QJsonObject content = document->serialize();
        const QJsonObject emptyContent = empty->serialize();
        const auto setLevels = [&](Document::AccessLevel level) {
            m_context->setLevel(document->documentId(), level);
            m_context->setLevel(empty->documentId(), level);
            processEvents();
        };
        for (int i = firstProperty; i < document->metaObject()->propertyCount(); ++i) {
            const QMetaProperty property = document->metaObject()->property(i);
            const QByteArray name = property.name();
            const QVariant value = property.read(document);
            setLevels(Document::NoAccess);
            const bool isList = QByteArray(property.typeName()).startsWith("QQmlListProperty");
            if (property.isStored() && name != "proxyColor" && !isList) {
                QVERIFY2(isSame(property.read(document), property.read(empty)), property.name());
            }
            setLevels(Document::ReadAccess);
            if (property.isWritable()) {
                property.write(empty, value);
                property.write(document, property.read(empty));
            }
            setLevels(Document::WriteAccess);
        }
        QCOMPARE(document->serialize(), content);
        QCOMPARE(empty->serialize(), emptyContent);
    }

    // The sample content is what its classes would store themselves: when a document is saved,
    // nothing of it gets lost and nothing is added.
    void sampleContentIsStoredAsItWas()
    {
        const LogCapture log;
        QJsonObject stored; // by id
        const QDir folder(qEnvironmentVariable("VORREL_SOURCE_DIR") + "/database/sample"_s);
        for (const QString &name : folder.entryList({ "*.json"_s })) {
            QFile file(folder.filePath(name));
            QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name));
            for (const QJsonValue document : QJsonDocument::fromJson(file.readAll()).array()) {
                stored.insert(document["_id"_s].toString(), document);
                m_context->addDocumentNode(document["_id"_s].toString().toLatin1(),
                                           document.toObject());
            }
        }
        QVERIFY(stored.size() > 60);
        for (const QString &id : stored.keys()) {
            QVERIFY2(m_context->loadedDocument(id), qPrintable(id));
        }
        m_context->finishIncubation();
        for (Document *document : ownDocuments(m_context->documents())) {
            QJsonObject before = stored.value(document->documentId()).toObject();
            before.remove("_attachments"_s); // not ours to write
            before.insert("creationVersion"_s, vo::Version::currentVersion().versionString());
            QCOMPARE(QJsonDocument(document->serialize()).toJson(), QJsonDocument(before).toJson());
            QVERIFY(document->isComplete());
        }
        QCOMPARE(log.lines(), QStringList());
        QVERIFY(!m_context->hasLocalChanges());
    }

    void keyValueStoreHoldsJson()
    {
        const QVariant object = QVariant::fromValue<QObject *>(this);
        const QVariantMap nested { { "a"_s, QVariantList { 1, QVariant(), object } } };
        const std::vector<std::pair<QVariant, QJsonValue>> rows {
            { 1.5, 1.5 },
            { object, {} },
            { nested, R"({"a": [1, null, null]})"_json },
            { QUrl("http://a.test"_s), "http://a.test"_s },
        };
        auto *store = m_context->create<KeyValueStore>();
        for (const auto &[value, json] : rows) {
            QVERIFY(store->setValue("k"_s, value) && !store->setValue("k"_s, value));
            QCOMPARE(store->data(), (QJsonObject { { "k"_s, json } }));
            QCOMPARE(store->value("k"_s), json.toVariant()); // what another program will read
            store->clearValue("k"_s);
        }
    }

    void groupsFormTrees()
    {
        auto *root = m_context->create<ProductGroup>();
        auto *child = m_context->create<ProductGroup>();
        auto *leaf = m_context->create<ProductGroup>();
        QVERIFY(child->setParentGroup(root) && leaf->setParentGroup(child));
        QCOMPARE(root->childGroups(), QList<Group *> { child });
        QVERIFY(root->acceptsParentGroup(nullptr) && leaf->acceptsParentGroup(root));
        QVERIFY(!root->acceptsParentGroup(root) && !root->acceptsParentGroup(leaf));
        const QSignalSpy children(root, &Group::childGroupsChanged);
        child->remove();
        QVERIFY(!leaf->parentGroup() && root->childGroups().isEmpty() && children.count() == 1);
        // Two clients at once may have stored a circle.
        m_context->store("1"_s, R"({"type": "group:product", "parentGroup": "2"})"_json);
        m_context->store("2"_s, R"({"type": "group:product", "parentGroup": "1"})"_json);
        QVERIFY(leaf->acceptsParentGroup(qobject_cast<Group *>(m_context->loadedDocument("1"_s))));
    }

    void productsHaveAPricePerCountry()
    {
        auto *product = m_context->create<Product>();
        QVERIFY(product->setPrice(12.5)); // in the country of the context
        QVERIFY(product->setPrice("DE"_s, 11) && !product->setPrice("DE"_s, 11));
        QCOMPARE(product->prices(), R"({"AT": 12.5, "DE": 11})"_json);
        QCOMPARE(product->price() + product->getPrice("DE"_s) + product->getPrice("IT"_s), 23.5);
    }

    void itemsFollowTheImageThatStandsForThem()
    {
        auto *product = m_context->create<Product>();
        auto *image = m_context->create<ImageAsset>("i"_s);
        const QSignalSpy told(product, &CatalogItem::primaryImageChanged);
        QVERIFY(product->setPrimaryImage(image) && !product->setPrimaryImage(image));
        QCOMPARE(product->serialize().value("images"_s), (QJsonObject { { "primary"_s, "i"_s } }));
        image->remove();
        QVERIFY(!product->primaryImage() && told.count() == 2);
    }

    void countriesAndLanguagesHaveNames()
    {
        const LogCapture log;
        auto *country = m_context->create<Country>();
        auto *language = m_context->create<Language>();
        const QSignalSpy named(country, &Country::nameChanged);
        QVERIFY(country->name().isEmpty() && country->nativeName().isEmpty());
        QVERIFY(country->setCode("at"_s) && !country->setCode("AT"_s) && !country->setCode("ZZ"_s));
        QVERIFY(log.contains("vorrel.data|warning|Invalid country code: ZZ"_s));
        QCOMPARE(country->code() + country->nativeName(), "ATÖsterreich"_s);
        QCOMPARE(country->flag(), QUrl("qrc:/data/lib/images/flags/AT.svg"_s));
        QVERIFY(country->name() == "Austria"_s && named.count() == 1);
        for (const QString &code : Country::knownCodes()) {
            country->setCode(code);
            QVERIFY2(country->name().size() > 2 && !country->name().contains("name."_s),
                     qPrintable(code));
        }
        QCOMPARE(Country::knownCodes().size(), 249);
        country->assignData({ { "code"_s, "nowhere"_s } });
        QVERIFY(country->name().isEmpty() && country->flag().isEmpty());
        for (const QString &row :
             "de German DE.svg|el Modern Greek GR.svg|eo Esperanto |xx xx "_lines) {
            language->setCode(row.left(2));
            QCOMPARE(row.left(3) + language->name() + " "_s + language->flag().fileName(), row);
        }
    }

    void devicesTellTheNameOfTheirLocation()
    {
        auto *device = m_context->create<Device>();
        auto *here = m_context->create<Location>();
        device->setLocation(here);
        const QSignalSpy changed(device, &Device::locationNameChanged);
        here->setLabel("  Here "_s);
        here->setLabel("   "_s); // refused
        QVERIFY(device->locationName() == "Here"_s && changed.count() == 1);
        device->setLocation(m_context->create<Location>());
        const int afterMove = int(changed.count());
        here->setLabel("Far away"_s);
        QCOMPARE(changed.count(), afterMove);
    }

    void swatchesKeepTheirColorsInOrder()
    {
        ColorSwatch *swatch = m_context->create<ColorPalette>()->addSwatch();
        QVERIFY(swatch->insertColor(Qt::black, -1) && swatch->insertColor(Qt::blue, 99));
        for (const int index : { -1, 2, std::numeric_limits<int>::max() }) {
            QVERIFY(!swatch->removeColor(index) && !swatch->setColor(Qt::red, index));
        }
        QVERIFY(swatch->setColor(Qt::red, 1) && !swatch->setColor(Qt::red, 1));
        QVERIFY(swatch->removeColor(0) && !swatch->removeColor(QColor(Qt::black)));
        QCOMPARE(swatch->colors(), QJsonArray { "#ff0000"_s });
    }

private:
    /// A new document of a linked or an inline type.
    Document *make(const QString &type)
    {
        Document *document = InlineDocument::create(type, m_context->create());
        return document ? document : LinkedDocument::create(type, m_context.get());
    }

    std::unique_ptr<TestContext> m_context;
};

QTEST_GUILESS_MAIN(tst_Documents)
#include "tst_documents.moc"
