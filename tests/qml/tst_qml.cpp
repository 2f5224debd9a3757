// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// Runs the tst_*.qml files of this folder. Their engine talks to a database double that holds the
// sample content. A warning of the engine, such as an error in a binding, is a failure.

#include "support/exhibit.h"
#include "support/fakecouch.h"
#include "support/literals.h"

#include <QtCore/QDirIterator>
#include <QtCore/QJsonArray>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlError>
#include <QtQml/QQmlNetworkAccessManagerFactory>
#include <QtQuickTest/quicktest.h>

#include <cstdlib>

using namespace vo::test;

struct SampleDatabase : QQmlNetworkAccessManagerFactory
{
    QNetworkAccessManager *create(QObject *parent) override
    {
        auto *couch = new FakeCouch(parent);
        QHash<QString, QByteArray> contents;
        QDirIterator files(qEnvironmentVariable("VORREL_SOURCE_DIR") + "/database/sample"_s,
                           { "*.json"_s });
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QFile::ReadOnly)) {
                qFatal("Cannot read %s", qPrintable(file.fileName()));
            }
            const QJsonArray documents = QJsonDocument::fromJson(file.readAll()).array();
            for (const QJsonValue &document : documents) {
                couch->store(document.toObject());
                const QJsonObject attachments = document["_attachments"_s].toObject();
                for (const QString &name : attachments.keys()) {
                    const QString data = attachments[name]["data"_s].toString();
                    contents.insert(name, QByteArray::fromBase64(data.toLatin1()));
                }
            }
        }
        couch->setResponder([contents](const FakeCouch::Call &call) {
            const auto found = contents.find(call.resource());
            return found == contents.end() ? std::optional<FakeCouch::Answer>()
                                           : FakeCouch::Answer { 200, *found, {} };
        });
        return couch;
    }
};

class Setup : public QObject
{
    Q_OBJECT
public:
    Setup() { registerExhibits(); }

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        engine->setNetworkAccessManagerFactory(&m_database);
        connect(engine, &QQmlEngine::warnings, this, [](const QList<QQmlError> &warnings) {
            qCritical() << "The QML engine warns:" << warnings;
            std::exit(EXIT_FAILURE);
        });
    }

private:
    SampleDatabase m_database;
};

QUICK_TEST_MAIN_WITH_SETUP(qml, Setup)

#include "tst_qml.moc"
