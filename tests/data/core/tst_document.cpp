// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/documenttest.h"

#include <vorrel/util/message.h>

#include <QtCore/QRandomGenerator>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

namespace {

/// A part of a document that it does not belong to any more.
struct Orphan : public LinkDocument
{
    using LinkDocument::LinkDocument;
    [[nodiscard]] const Document *linkSource() const override { return nullptr; }
};

/// Takes over a name of its base class.
struct Relabelled : public LinkDocument
{
    using LinkDocument::LinkDocument;
    Property<QString> ownLabel { "label", this };
};

/// The rule as it is told: equal in all segments of the base.
bool isBaseTypeBySegments(const QString &base, const QString &type)
{
    const QStringList bases = base.split(QLatin1Char(':'));
    return type.split(QLatin1Char(':')).mid(0, bases.size()) == bases;
}

QString randomType(QRandomGenerator &random)
{
    QString type;
    for (int length = random.bounded(9); length > 0; --length) {
        type += QLatin1Char("aab::"[random.bounded(5)]);
    }
    return type;
}

} // namespace

class tst_Document : public DocumentTest
{
    Q_OBJECT
private Q_SLOTS:
    void typeIsMadeOfTheSegmentsOfItsClasses()
    {
        const std::vector<std::pair<const QMetaObject *, QString>> rows {
            { &Document::staticMetaObject, QString() },
            { &LinkedDocument::staticMetaObject, QString() },
            { &PictureDocument::staticMetaObject, "picture"_s },
            { &PhotoDocument::staticMetaObject, "picture:photo"_s },
            { &ScannedPhotoDocument::staticMetaObject, "picture:photo"_s },
            { &LonePhotoDocument::staticMetaObject, "alone"_s },
            { &PhotoLinkDocument::staticMetaObject, "link:photo"_s },
            { &PlainPhotoDocument::staticMetaObject, "photo"_s },
        };
        for (int round = 0; round < 2; ++round) { // the second from the cache
            for (const auto &[metaObject, type] : rows) {
                QCOMPARE(Document::typeOf(*metaObject), type);
            }
        }
    }

    void baseTypeIsAPrefixOfWholeSegments()
    {
        QVERIFY(Document::isBaseType("asset"_s, "asset:image"_s));
        QVERIFY(!Document::isBaseType("asset:image"_s, "asset"_s));
        QVERIFY(Document::isBaseType("asset:image"_s, "asset:image"_s));
        QVERIFY(!Document::isBaseType("asset"_s, "assets"_s));
        QVERIFY(!Document::isBaseType("asset"_s, "Asset"_s));
        QVERIFY(Document::isBaseType(""_s, QString()));
        QVERIFY(!Document::isBaseType(QString(), "asset"_s));
        QVERIFY(Document::isBaseType(QString(), ":asset"_s));
    }
    void baseTypeAgreesWithTheRuleOverSegments()
    {
        const int steps = qEnvironmentVariable("VORREL_TEST_STEPS", "10000"_s).toInt();
        QRandomGenerator random(1);
        for (int step = 0; step < steps; ++step) {
            const QString base = randomType(random);
            const QString type = step % 2 == 0 ? base + randomType(random) : randomType(random);
            QVERIFY2(Document::isBaseType(base, type) == isBaseTypeBySegments(base, type),
                     qPrintable(base + " and "_s + type));
        }
    }

    void attachmentsAreCounted()
    {
        auto *source = create<LinkDocument>();
        auto *target = create<LinkDocument>();
        const QSignalSpy changed(source, &Document::attachedDocumentsChanged);
        source->attachDocument(target);
        source->attachDocument(target);
        QCOMPARE(source->attached(), QList<Document *> { target });
        QCOMPARE(AccessContext::access(source).targets.size(), 2);
        source->detachDocument(target);
        QCOMPARE(target->referencingDocuments(), QList<Document *> { source });
        QCOMPARE(source->attachedDocument(target->documentId()), target);
        QCOMPARE(source->attachedDocument(source->documentId()), nullptr);
        source->detachDocument(target);
        source->attachDocument(nullptr);
        source->detachDocument(nullptr);
        QVERIFY(target->referencingDocuments().isEmpty());
        QVERIFY(source->attached().isEmpty());
        QVERIFY(AccessContext::access(source).targets.isEmpty());
        QCOMPARE(changed.count(), 4);
    }

    void completeDocumentStaysComplete()
    {
        const auto documents = chain(3);
        documents[2]->d->target.set(documents[0]); // stored data may have rings
        documents[1]->d->target.complete = false;
        QVERIFY(!documents[0]->isComplete());
        QSet<const LinkedDocument *> found;
        documents[1]->Document::aggregateDependencies(found);
        QVERIFY(found.isEmpty());
        documents[0]->Document::aggregateDependencies(found); // ends at the next linked document
        QCOMPARE(found, QSet<const LinkedDocument *> { documents[1] });
        documents[1]->d->target.complete = true;
        QVERIFY(documents[0]->isComplete());
        documents[1]->d->target.complete = false;
        QVERIFY(documents[0]->isComplete());
        QVERIFY(documents[2]->isComplete());
    }

    void linkThatClosesACycleIsReported_data()
    {
        QTest::addColumn<QStringList>("labels"); // of the chain from the target to the source
        QTest::addColumn<QStringList>("cycle");
        const QString none;
        QTest::newRow("itself, no label") << QStringList { none } << QStringList { none, none };
        QTest::newRow("itself") << "s"_l
                                << "s s s"_l;
        QTest::newRow("two") << "a s"_l
                             << "s a s s"_l;
        QTest::newRow("three, some without label")
            << QStringList { "a"_s, none, "b"_s, none } << QStringList { none, "a"_s, "b"_s, none };
    }
    void linkThatClosesACycleIsReported()
    {
        QFETCH(QStringList, labels);
        QFETCH(QStringList, cycle);
        const auto documents = chain(int(labels.size()));
        for (int index = 0; index < labels.size(); ++index) {
            documents[index]->setLabel(labels[index]);
            // A way that leads nowhere is not part of the cycle.
            documents[index]->d->elements.insert(chain(2).constFirst(), -1);
        }
        LinkDocument *source = documents.constLast();
        const QSignalSpy sent(vo::util::Message::instance(), &vo::util::Message::sent);
        QVERIFY(source->performCycleCheck(documents[0]));
        QCOMPARE(sent.count(), 1);
        QCOMPARE(sent[0][0].toString(), "vorrel.error.DependencyCycle"_s);
        const auto parameters = sent[0][1].value<QMap<QString, QVariant>>();
        QCOMPARE(QStringList(parameters.keys()), "cycle source target"_l);
        QCOMPARE(parameters["source"_s].value<QObject *>(), source);
        QCOMPARE(parameters["target"_s].value<QObject *>(), documents[0]);
        QStringList found;
        for (const QVariant &entry : parameters["cycle"_s].toList()) {
            found += qobject_cast<Document *>(entry.value<QObject *>())->label();
        }
        QCOMPARE(found, cycle);
    }
    void harmlessLinkIsNotReported()
    {
        const auto documents = chain(3);
        Orphan orphan(m_context.get());
        const QSignalSpy sent(vo::util::Message::instance(), &vo::util::Message::sent);
        QVERIFY(!documents[0]->performCycleCheck(nullptr));
        QVERIFY(!documents[0]->performCycleCheck(documents[2]));
        QVERIFY(!orphan.performCycleCheck(&orphan));
        QCOMPARE(sent.count(), 0);
    }

    void walksEndQuickly_data()
    {
        QTest::addColumn<int>("levels");
        QTest::addColumn<int>("width");
        QTest::newRow("ladder with 2^60 ways") << 60 << 2;
        QTest::newRow("long chain") << 100000 << 1;
    }
    void walksEndQuickly()
    {
        QFETCH(int, levels);
        QFETCH(int, width);
        QObject owner; // takes them all with it, which is faster than one by one
        QList<LinkDocument *> former;
        auto *first = create<LinkDocument>();
        former += first;
        for (int level = 0; level < levels; ++level) {
            QList<LinkDocument *> present;
            for (int place = 0; place < width; ++place) {
                present += new LinkDocument(m_context.get());
                present.constLast()->setParent(&owner);
                for (LinkDocument *source : std::as_const(former)) {
                    source->d->elements.insert(present.constLast(), -1);
                }
            }
            former = present;
        }
        auto *source = create<LinkDocument>();
        QVERIFY(!source->performCycleCheck(first));
        former[0]->d->elements.insert(first, -1); // a ring that the source is not part of
        QVERIFY(!source->performCycleCheck(first));
        QVERIFY(first->isComplete());
        QCOMPARE(first->subtreeRevision().size(), 32);
        former[0]->d->elements.insert(source, -1);
        QVERIFY(source->performCycleCheck(first));
    }

    void listElementsAreReachedByName()
    {
        const QString list = "elements"_s;
        auto *owner = create<LinkDocument>();
        auto *a = create<LinkDocument>();
        auto *b = create<LinkDocument>();
        QVERIFY(owner->addListElement(list, a));
        QVERIFY(owner->insertListElement(list, b, 0));
        QCOMPARE(owner->indexOfListElement(list, a), 1);
        QVERIFY(owner->moveListElement(list, 1, 0));
        QCOMPARE(owner->indexOfListElement(list, a), 0);
        QVERIFY(!owner->removeListIndex(list, 0)); // false, though it is gone
        QCOMPARE(owner->indexOfListElement(list, a), -1);
        QVERIFY(!owner->removeListIndex(list, 7));
        QVERIFY(owner->removeListElement(list, b));
        QVERIFY(!owner->removeListElement(list, b));
        for (const QString &other : "target label documentId nothing"_l) {
            QVERIFY(!owner->addListElement(other, a));
            QVERIFY(!owner->insertListElement(other, a, 0));
            QVERIFY(!owner->removeListElement(other, a));
            QVERIFY(!owner->removeListIndex(other, 0));
            QVERIFY(!owner->moveListElement(other, 0, 0));
            QCOMPARE(owner->indexOfListElement(other, a), -1);
            QCOMPARE(owner->hasProperty(other), other != "nothing"_s);
        }
    }

    void derivedClassTakesOverAProperty()
    {
        Relabelled source(m_context.get());
        Relabelled target(m_context.get());
        source.ownLabel.set("own"_s);
        target.copyProperty("label"_s, &source);
        QCOMPARE(target.ownLabel.get(), "own"_s);
        QCOMPARE(target.serialize()["label"_s].toString(), "own"_s);
    }

private:
    /// Documents of which each points at the next one.
    QList<LinkDocument *> chain(int length)
    {
        QList<LinkDocument *> documents;
        while (documents.size() < length) {
            documents += create<LinkDocument>();
            if (documents.size() > 1) {
                documents[documents.size() - 2]->d->target.set(documents.constLast());
            }
        }
        return documents;
    }
};

QTEST_GUILESS_MAIN(tst_Document)
#include "tst_document.moc"
