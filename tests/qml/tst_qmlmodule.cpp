// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// The QML module as C++ meets it: here the types were registered before any import.

#include <vorrel/data/context/context.h>
#include <vorrel/data/core/linkeddocument.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlListReference>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace vo::data;

class TestQmlModule : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsAndPointersAreReadableWithoutAnImport();
    void theModuleCanBeImportedAfterAContextWasMade();
    void writingFromCppIsSilent();
};

// The first test: no engine has been there yet.
void TestQmlModule::listsAndPointersAreReadableWithoutAnImport()
{
    Context context;
    Document *tag = context.createDocument(QStringLiteral("tag"));
    Document *location = context.createDocument(QStringLiteral("location"));
    tag->attachDocument(location);
    QCOMPARE(tag->property("context").value<Context *>(), &context);
    const QQmlListReference attached(tag, "attachedDocuments");
    QVERIFY(attached.isValid());
    QCOMPARE(attached.count(), 1);
    QCOMPARE(attached.at(0), location);
}

void TestQmlModule::theModuleCanBeImportedAfterAContextWasMade()
{
    Context context;
    Document *tag = context.createDocument(QStringLiteral("tag"));
    tag->attachDocument(context.createDocumentWithId(QStringLiteral("tag"), QStringLiteral("b")));

    for (int engines = 0; engines < 2; ++engines) {
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import QtQml 2.15\n"
                          "import vorrel.data.Core 1.0\n"
                          "QtObject {\n"
                          "    property Document document\n"
                          "    property RootDocument root: RootDocument { }\n"
                          "    property string other: document.attachedDocuments[0].documentId\n"
                          "}\n",
                          QUrl());
        const std::unique_ptr<QObject> object(component.createWithInitialProperties(
            { { QStringLiteral("document"), QVariant::fromValue(tag) } }));
        QVERIFY2(object, qPrintable(component.errorString()));
        QCOMPARE(object->property("other").toString(), QStringLiteral("b"));
    }
}

void TestQmlModule::writingFromCppIsSilent()
{
    Context context;
    QSignalSpy urls(&context, &Context::serviceUrlChanged);
    QSignalSpy monitors(&context, &Context::changeFeedMonitorTypeChanged);
    const QUrl url(QStringLiteral("http://localhost:5984"));
    context.setServiceUrl(url);
    context.setChangeFeedMonitorType(Context::PollingMonitor);
    QCOMPARE(context.serviceUrl(), url);
    QCOMPARE(context.changeFeedMonitorType(), Context::PollingMonitor);
    QCOMPARE(urls.count() + monitors.count(), 0);
}

QTEST_GUILESS_MAIN(TestQmlModule)

#include "tst_qmlmodule.moc"
