// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <VorrelDataCore>
#include <QtCore/QCoreApplication>
#include <QtNetwork/QNetworkAccessManager>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QNetworkAccessManager network;
    vo::data::Context shop;
    shop.setNetworkAccessManager(&network);
    shop.setServiceUrl(QUrl(argc > 1 ? QString::fromLocal8Bit(argv[1])
                                     : QStringLiteral("http://127.0.0.1:5984")));
    shop.setDatabase(QStringLiteral("sample"));

    const QString id = QStringLiteral("sample.location.utrecht");
    QObject::connect(shop.loadDocument(id), &vo::data::LoadRequest::finished, &app, [&] {
        if (auto *store = qobject_cast<vo::data::Location *>(shop.loadedDocument(id))) {
            qInfo() << store->label() << "in" << store->city();
            store->setNotes(QStringLiteral("Closed on Monday"));
            qInfo() << "unsaved changes:" << shop.hasLocalChanges();
        }
        QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
