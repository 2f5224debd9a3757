// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/sampledocuments.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QRandomGenerator>

namespace vo::benchmark {

namespace {

QJsonObject structs(int number)
{
    QJsonObject data;
    for (int index = 0; index < 10; ++index) {
        data.insert(QStringLiteral("s:slot-%1").arg(index),
                    QJsonObject {
                        { QStringLiteral("order"), index },
                        { QStringLiteral("text"), QStringLiteral("Slot of %1").arg(number) },
                    });
    }
    return data;
}

} // namespace

QString sampleId(int number)
{
    return QStringLiteral("sample.%1").arg(number, 8, 10, QLatin1Char('0'));
}

QString sampleName(int number)
{
    static const QStringList words =
        QStringLiteral("red blue green black white chair table shelf lamp sofa desk bed")
            .split(QLatin1Char(' '));
    QRandomGenerator random { quint32(number) };
    const auto word = [&random] { return words.at(random.bounded(int(words.size()))); };
    return QStringLiteral("%1 %2 %3 %4").arg(word(), word(), word()).arg(number);
}

QJsonObject sampleDocument(int number)
{
    QJsonObject object {
        { QStringLiteral("_id"), sampleId(number) },
        { QStringLiteral("_rev"), QStringLiteral("3-967a00dff5e02add41819138abb3284d") },
        { QStringLiteral("type"), QStringLiteral("typical") },
        { QStringLiteral("deleted"), false },
        { QStringLiteral("label"), QStringLiteral("Document number %1").arg(number) },
        { QStringLiteral("created"), QStringLiteral("2025-04-24T12:51:00Z") },
        { QStringLiteral("edited"), QStringLiteral("2025-06-23T16:24:00Z") },
        { QStringLiteral("creationVersion"), QStringLiteral("1.0.0") },
        { QStringLiteral("references"), QJsonArray() },
        { QStringLiteral("title"),
          QJsonObject { { QStringLiteral("type"), QStringLiteral("langstring") },
                        { QStringLiteral("items"),
                          QJsonObject { { QStringLiteral("de"), QStringLiteral("Titel") },
                                        { QStringLiteral("en"), QStringLiteral("Title") } } } } },
        { QStringLiteral(":data"), structs(number) },
    };
    for (int index = 0; index < 5; ++index) {
        object.insert(QStringLiteral("text%1").arg(index), QStringLiteral("Text %1").arg(number));
        object.insert(QStringLiteral("number%1").arg(index), number * 0.5 + index);
        object.insert(QStringLiteral("flag%1").arg(index), index % 2 == 0);
    }
    return object;
}

QByteArray sampleJson(int number)
{
    return QJsonDocument(sampleDocument(number)).toJson(QJsonDocument::Compact);
}

QJsonObject genericDocument(int number)
{
    QJsonObject document = sampleDocument(number);
    QJsonObject values;
    for (const QString &key : document.keys()) {
        if (key.back().isDigit()) {
            values.insert(key, document.take(key));
        }
    }
    QJsonObject data = document.value(QLatin1String(":data")).toObject();
    data.insert(QStringLiteral("s:values"), values);
    document.insert(QStringLiteral(":data"), data);
    document.insert(QStringLiteral("type"), QStringLiteral("data:sample"));
    return document;
}

} // namespace vo::benchmark
