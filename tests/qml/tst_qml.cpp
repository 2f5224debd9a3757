// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Runs the tst_*.qml files of this folder. Their engine talks to a database double that holds the
// sample content. A warning of the engine, such as an error in a binding, is a failure.

#include "support/fakecouch.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlNetworkAccessManagerFactory>
#include <QtQuickTest/quicktest.h>

#include <cstdlib>

class SampleDatabase : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override
    {
        auto *couch = new vo::test::FakeCouch(parent);
        const QDir folder(qEnvironmentVariable("VORREL_SOURCE_DIR")
                          + QStringLiteral("/database/sample"));
        const QStringList names = folder.entryList({ QStringLiteral("*.json") });
        for (const QString &name : names) {
            QFile file(folder.filePath(name));
            if (!file.open(QFile::ReadOnly)) {
                qFatal("Cannot read %s", qPrintable(file.fileName()));
            }
            const QJsonArray documents = QJsonDocument::fromJson(file.readAll()).array();
            for (const QJsonValue &document : documents) {
                couch->store(document.toObject());
            }
        }
        return couch;
    }
};

class Setup : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->setNetworkAccessManagerFactory(&m_database);
        connect(engine, &QQmlEngine::warnings, this, [this] { m_flawless = false; });
    }

    void cleanupTestCase()
    {
        if (!m_flawless) {
            qCritical("There were warnings of the QML engine");
            std::exit(EXIT_FAILURE);
        }
    }

private:
    SampleDatabase m_database;
    bool m_flawless = true;
};

QUICK_TEST_MAIN_WITH_SETUP(qml, Setup)

#include "tst_qml.moc"
