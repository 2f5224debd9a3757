// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"

#include <vorrel/data/core/typeregistry_p.h>
#include <vorrel/data/documents/genericdata.h>
#include <vorrel/data/module/registration.h>

#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

/// Every Context has one.
class SingletonDocument : public LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "singleton")
    Q_CLASSINFO("AutoInstance", "test.singleton")
public:
    using LinkedDocument::LinkedDocument;
    [[nodiscard]] StorageFlags storageFlags() const override { return CreatedInternally; }
};

class tst_TypeRegistry : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void classFollowsFromTheType()
    {
        const std::vector<std::pair<QString, QByteArray>> rows {
            { "picture"_s, "vo::test::PictureDocument" },
            { "picture:photo"_s, "vo::test::PhotoDocument" },
            { "link:photo"_s, "vo::test::PhotoLinkDocument" },
            { "photo"_s, "vo::test::PlainPhotoDocument" },
            { "alone"_s, "vo::test::LonePhotoDocument" },
            { "tag"_s, "vo::data::Tag" },
            { "data:registered"_s, "vo::test::RegisteredDataDocument" },
            { "data:registered:more"_s, "vo::data::GenericData" },
        };
        for (const auto &[type, className] : rows) {
            const auto *document = registry().create(type, m_context.get());
            QVERIFY2(document, className);
            QCOMPARE(QByteArray(document->metaObject()->className()), className);
            QCOMPARE(document->type(), type);
        }
        for (const QString &type : "photo:picture Picture picture:"_l + QStringList { QString() }) {
            QCOMPARE(registry().create(type, m_context.get()), nullptr);
        }
    }

    void customTypesAreChecked()
    {
        const auto made = [this](const QString &tail) {
            const auto *document = registry().create("data"_s + tail, m_context.get());
            return qobject_cast<const GenericData *>(document)
                && document->serialize()["type"_s].toString() == "data"_s + tail;
        };
        for (const QString &tail : ":mytype :mytype:sub :a1:b2"_l) {
            QVERIFY2(made(tail), qPrintable(tail));
        }
        for (const QString &tail :
             ":my-type :myType :a :ab:c :1a :größe :ab::cd :ab: : base:ab"_l) {
            QVERIFY2(!made(tail), qPrintable(tail));
        }
        QVERIFY(!made(QString()));
        QVERIFY(!made(":mytype\n"_s));
        QVERIFY(!made(":mytype"_s + QChar(0)));
        QVERIFY(made(QLatin1Char(':') + QString(255, QLatin1Char('a'))));
        QVERIFY(!made(QLatin1Char(':') + QString(256, QLatin1Char('a'))));
        QVERIFY(!made(QLatin1Char(':') + QString(1000000, QLatin1Char('a'))));
    }

    void everyContextHasItsAutomaticDocuments()
    {
        Context other;
        auto *document =
            qobject_cast<SingletonDocument *>(m_context->loadedDocument("test.singleton"_s));
        QVERIFY(document);
        QVERIFY(other.loadedDocument("test.singleton"_s) != document);
        // Its stored form may be in the database: only an edit may overwrite that.
        QVERIFY(!m_context->hasLocalChanges());
        document->setLabel("edited"_s);
        QVERIFY(m_context->hasLocalChanges());

        QCOMPARE(LinkedDocument::autoInstances("singleton"_s), "test.singleton"_l);
        for (const QString &type : "single singleton:sub tag"_l) {
            QVERIFY(LinkedDocument::autoInstances(type).isEmpty());
        }
    }

    void registrationCanBeRepeated()
    {
        const auto types = registry().documentTypes();
        const auto instances = registry().autoInstances();
        _vo_data_registerTypesdata_core();
        registry().addLinked<PictureDocument>();
        QCOMPARE(registry().documentTypes(), types);
        QCOMPARE(registry().autoInstances(), instances);
        QVERIFY(types.contains("tag"_s) && types.contains("data"_s));
        QCOMPARE(registry().documentType("nothing"_s), nullptr);
    }

private:
    static TypeRegistry &registry() { return TypeRegistry::instance(); }
    void registerMore() override { registry().addLinked<SingletonDocument>(); }
};

QTEST_GUILESS_MAIN(tst_TypeRegistry)
#include "tst_typeregistry.moc"
