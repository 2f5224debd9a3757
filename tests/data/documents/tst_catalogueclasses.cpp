// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/linkdocuments.h"

#include <vorrel/data/documents/colorpalette.h>
#include <vorrel/data/documents/colorswatch.h>
#include <vorrel/data/documents/device.h>
#include <vorrel/data/documents/product.h>
#include <vorrel/data/documents/producttag.h>
#include <vorrel/data/documents/taggroup.h>

#include <QtCore/QJsonArray>
#include <QtQml/QQmlListReference>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

template <typename T>
T *make(Context &context, const QString &id)
{
    return qobject_cast<T *>(
        context.createDocumentWithId(Document::typeOf(T::staticMetaObject), id));
}

} // namespace

class tst_CatalogueClasses : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void keepTheirStoredData_data();
    void keepTheirStoredData();
    void groupsFormTrees();
    void productsHaveAPricePerCountry();
    void productsAreLabelledByTheirName();
    void devicesTellTheNameOfTheirLocation();
    void palettesHoldSwatches();
    void swatchesKeepTheirColorsInOrder();
};

void tst_CatalogueClasses::keepTheirStoredData_data()
{
    QTest::addColumn<QJsonObject>("stored");
    const auto row = [](const char *type, const char *data) {
        QJsonObject object = QJsonDocument::fromJson(data).object();
        object.insert("type"_q, QLatin1String(type));
        QTest::newRow(type) << object;
    };
    row("product", R"({"name": {"type": "langstring", "items": {"de": "Kanne"}},
        "description": {"type": "langstring", "items": {"de": "Zwei\nZeilen"}},
        "prices": {"AT": 9.5, "DE": 8}, "productGroup": "g"})");
    row("group:product", R"({"parentGroup": "g", "label": "Cups"})");
    row("group:tag", R"({"parentGroup": null, "label": "Seasons"})");
    row("tag:product", R"({"name": "winter", "icon": "image://x", "tagGroup": "t",
        "applicableTypes": ["product"]})");
    row("device", R"({"serialNumber": "0815", "location": "l", "label": "Screen"})");
    row("customer", R"({"fbtoken": "token"})");
    row("location", R"({"address": "Ring 1", "city": "Wien", "zipCode": "1010", "country": "AT",
        "notes": "up\nstairs", "position": {"lat": 48.2, "lon": 16.4}})");
    row("colorpalette", R"({"label": "Warm", "swatches": [
        {"type": "colorswatch", "colors": ["#ff0000", "#ff8000"]},
        {"type": "colorswatch", "colors": []}]})");
}

void tst_CatalogueClasses::keepTheirStoredData()
{
    QFETCH(QJsonObject, stored);
    GraphContext context;
    make<ProductGroup>(context, "g"_q);
    make<TagGroup>(context, "t"_q);
    make<Location>(context, "l"_q);
    const QString type = stored.value("type"_q).toString();
    LinkedDocument *document = context.store("x"_q, stored)->document();
    QVERIFY(document);
    QCOMPARE(document->type(), type);
    settle();
    const QJsonObject once = document->serialize();
    LinkedDocument *again = context.store("y"_q, once)->document();
    settle();
    const QJsonObject twice = again->serialize();
    for (auto it = stored.begin(); it != stored.end(); ++it) {
        if (it.key() != "_id"_q && it.key() != "position"_q) {
            QCOMPARE(once.value(it.key()), it.value());
        }
        QCOMPARE(twice.value(it.key()), once.value(it.key()));
    }
    QVERIFY(!document->isDirty());
}

void tst_CatalogueClasses::groupsFormTrees()
{
    GraphContext context;
    auto *root = make<ProductGroup>(context, "root"_q);
    auto *child = make<ProductGroup>(context, "child"_q);
    auto *grandchild = make<ProductGroup>(context, "grandchild"_q);
    auto *tags = make<TagGroup>(context, "tags"_q);
    QSignalSpy children(root, &Group::childGroupsChanged);
    QVERIFY(child->setParentGroup(root));
    QVERIFY(grandchild->setParentGroup(child));
    QCOMPARE(children.count(), 1);
    QCOMPARE(root->childGroups(), QList<Group *> { child });

    QVERIFY(root->acceptsParentGroup(nullptr));
    QVERIFY(!root->acceptsParentGroup(root));
    QVERIFY(!root->acceptsParentGroup(grandchild));
    QVERIFY(!root->acceptsParentGroup(tags));
    QVERIFY(grandchild->acceptsParentGroup(root));
    QVERIFY(!root->setParentGroup(grandchild)); // it would close a cycle

    QCOMPARE(QQmlListReference(root, "childGroups").count(), 1);
    child->remove();
    QVERIFY(!grandchild->parentGroup());
    QVERIFY(root->childGroups().isEmpty());
    QCOMPARE(children.count(), 2);

    // Two clients at once may have stored a circle.
    context.store("1"_q, R"({"type": "group:product", "parentGroup": "2"})"_o);
    context.store("2"_q, R"({"type": "group:product", "parentGroup": "1"})"_o);
    auto *one = qobject_cast<Group *>(context.loadedDocument("1"_q));
    QVERIFY(grandchild->acceptsParentGroup(one));
    QCOMPARE(one->childGroups(), QList<Group *> { one->parentGroup() });
}

void tst_CatalogueClasses::productsHaveAPricePerCountry()
{
    GraphContext context;
    auto *product = make<Product>(context, "p"_q);
    QSignalSpy changed(product, &Product::pricesChanged);
    QVERIFY(product->setPrice(12.5)); // in the country of the context
    QCOMPARE(product->getPrice("AT"_q), 12.5);
    QVERIFY(product->setPrice("DE"_q, 11));
    QVERIFY(!product->setPrice("DE"_q, 11));
    QCOMPARE(product->price(), 12.5);
    QCOMPARE(product->getPrice("IT"_q), 0.0);
    QCOMPARE(product->prices(), R"({"AT": 12.5, "DE": 11})"_o);
    QCOMPARE(changed.count(), 2);
    const QJsonObject stored = product->serialize();
    QVERIFY(!stored.contains("price"_q) && !stored.contains("group"_q));

    auto *group = make<ProductGroup>(context, "g"_q);
    QVERIFY(product->setProperty("group", QVariant::fromValue(group)));
    QCOMPARE(product->productGroup(), group);
    auto *tag = make<ProductTag>(context, "tag"_q);
    auto *tags = make<TagGroup>(context, "tags"_q);
    QVERIFY(tag->setTagGroup(tags));
    QCOMPARE(tag->property("group").value<QObject *>(), tags);
    tags->remove();
    QVERIFY(!tag->tagGroup());
}

void tst_CatalogueClasses::productsAreLabelledByTheirName()
{
    GraphContext context;
    auto *product = make<Product>(context, "p"_q);
    QSignalSpy changed(product, &CatalogItem::nameChanged);
    QVERIFY(product->setName("two\nlines"_q));
    QCOMPARE(product->label(), "two lines"_q);
    QCOMPARE(product->property("label").toString(), "two lines"_q);
    QVERIFY(product->setDescription("two\nlines"_q));
    QCOMPARE(product->description(), "two\nlines"_q);
    QVERIFY(changed.count() > 0);
    const QMetaObject *meta = product->metaObject();
    QCOMPARE(meta->property(meta->indexOfProperty("label")).notifySignal().name(),
             QByteArray("nameChanged"));
}

void tst_CatalogueClasses::devicesTellTheNameOfTheirLocation()
{
    GraphContext context;
    auto *device = make<Device>(context, "d"_q);
    auto *here = make<Location>(context, "here"_q);
    auto *there = make<Location>(context, "there"_q);
    here->setLabel("  Here "_q);
    there->setLabel("There"_q);
    QCOMPARE(here->label(), "Here"_q);
    here->setLabel("   "_q); // refused
    QCOMPARE(here->label(), "Here"_q);

    QSignalSpy changed(device, &Device::locationNameChanged);
    device->setLocation(here);
    QCOMPARE(device->locationName(), "Here"_q);
    const int afterSet = int(changed.count());
    QVERIFY(afterSet > 0);
    here->setLabel("Hier"_q);
    QCOMPARE(changed.count(), afterSet + 1);
    QCOMPARE(device->locationName(), "Hier"_q);
    device->setLocation(there);
    const int afterMove = int(changed.count());
    here->setLabel("Far away"_q);
    QCOMPARE(changed.count(), afterMove);
    there->remove();
    QCOMPARE(device->locationName(), QString());
    QVERIFY(changed.count() > afterMove);
    QVERIFY(!device->serialize().contains("locationName"_q));
}

void tst_CatalogueClasses::palettesHoldSwatches()
{
    GraphContext context;
    auto *palette = make<ColorPalette>(context, "p"_q);
    context.recording = true;
    QSignalSpy changed(palette, &ColorPalette::swatchesChanged);
    ColorSwatch *first = palette->addSwatch();
    ColorSwatch *second = palette->addSwatch();
    QVERIFY(first && second);
    QVERIFY(second->insertColor(Qt::red));
    QVERIFY(palette->moveListElement("swatches"_q, 1, 0));
    QCOMPARE(palette->swatches(), QList<ColorSwatch *>({ second, first }));
    QCOMPARE(changed.count(), 3);
    QCOMPARE(QQmlListReference(palette, "swatches").count(), 2);
    QVERIFY(!palette->removeListIndex("swatches"_q, 0));
    QCOMPARE(palette->swatches(), QList<ColorSwatch *> { first });
    context.undo();
    QVERIFY(palette->swatches().isEmpty());
    context.redo();
    QCOMPARE(palette->swatches(), QList<ColorSwatch *> { first });

    context.setLevel("p"_q, Document::ReadAccess);
    settle();
    QVERIFY(!palette->addSwatch());
    QVERIFY(!first->insertColor(Qt::blue));
    QCOMPARE(palette->swatches().size(), 1);
}

void tst_CatalogueClasses::swatchesKeepTheirColorsInOrder()
{
    GraphContext context;
    ColorSwatch *swatch = make<ColorPalette>(context, "p"_q)->addSwatch();
    const auto names = [swatch] {
        QStringList list;
        const QJsonArray colors = swatch->colors();
        for (const QJsonValue color : colors) {
            list.append(color.toString());
        }
        return list.join(QLatin1Char(' '));
    };
    const QColor red(255, 0, 0);
    const QColor green(0, 255, 0);
    const QColor blue(0, 0, 255);
    for (const int index : { -1, 99, 0 }) {
        QVERIFY(swatch->insertColor(index == 0 ? blue : index == 99 ? green : red, index));
    }
    const QString order = names();
    QCOMPARE(order.split(QLatin1Char(' ')).size(), 3);
    QVERIFY(order.startsWith(swatch->colors().at(0).toString()));
    for (const int index : { -1, 3, std::numeric_limits<int>::max() }) {
        QVERIFY(!swatch->removeColor(index));
        QVERIFY(!swatch->setColor(red, index));
    }
    QCOMPARE(names(), order);
    QVERIFY(swatch->setColor(green, 0));
    QVERIFY(!swatch->setColor(green, 0));
    QVERIFY(swatch->removeColor(green)); // the first of two
    QVERIFY(swatch->removeColor(green));
    QVERIFY(!swatch->removeColor(green));
    QVERIFY(swatch->removeColor(0));
    QVERIFY(!swatch->removeColor(red));
    QVERIFY(swatch->colors().isEmpty());
}

QTEST_GUILESS_MAIN(tst_CatalogueClasses)
#include "tst_catalogueclasses.moc"
