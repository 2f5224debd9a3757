// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

// vorrel_regions SHARE OUTPUT LANGUAGE…
//
// Runs while the library is built: makes the table of country codes, and the texts of countries and
// languages, from what the package iso-codes has below SHARE.

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QtEndian>

namespace {

/// An English name, and the catalogue of iso-codes that has it in other languages.
struct Name
{
    QString english;
    QString catalogue;
};

using Names = QMap<QString, Name>; // by code

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("Cannot read %s", qPrintable(path));
    }
    return file.readAll();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("Cannot write %s", qPrintable(path));
    }
}

/// Adds what one file has, in place of what was there.
void addNames(Names &names, const QString &share, const QString &standard)
{
    const QByteArray json =
        read(share + QStringLiteral("/iso-codes/json/iso_%1.json").arg(standard));
    const QJsonArray entries = QJsonDocument::fromJson(json).object().value(standard).toArray();
    for (const QJsonValue &value : entries) {
        const QJsonObject entry = value.toObject();
        const QString code = entry.value(QLatin1String("alpha_2")).toString();
        const QString common = entry.value(QLatin1String("common_name")).toString();
        const QString name = entry.value(QLatin1String("name")).toString();
        if (!code.isEmpty()) {
            names.insert(code, { common.isEmpty() ? name : common, standard });
        }
    }
}

/// The texts of a compiled catalogue of GNU gettext: two tables of lengths and offsets.
QHash<QString, QString> catalogue(const QString &path)
{
    QHash<QString, QString> texts;
    const QByteArray file = read(path);
    const auto number = [&](qint64 offset) {
        return offset + 4 <= file.size()
            ? qint64(qFromLittleEndian<quint32>(file.constData() + offset))
            : 0;
    };
    const auto text = [&](qint64 entry) {
        return QString::fromUtf8(file.mid(int(number(entry + 4)), int(number(entry))));
    };
    constexpr qint64 magic = 0x950412de;
    if (number(0) != magic) {
        qFatal("%s is no catalogue", qPrintable(path));
    }
    for (qint64 i = 0; i < number(8); ++i) {
        texts.insert(text(number(12) + i * 8), text(number(16) + i * 8));
    }
    return texts;
}

/// Without other names and remarks: "Occitan (post 1500); Provençal" is "Occitan".
QString shortened(const QString &name)
{
    static const QRegularExpression remark(QStringLiteral("\\s*\\([^)]*\\)$"));
    return name.section(QLatin1Char(';'), 0, 0).remove(remark);
}

class Texts
{
public:
    Texts(const QString &share, const QString &language)
        : m_folder(share + QStringLiteral("/locale/%1/LC_MESSAGES/").arg(language))
        , m_isEnglish(language == QLatin1String("en"))
        , m_xml(QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS "
                               "version=\"2.1\" language=\"%1\" sourcelanguage=\"en\"><context>"
                               "<name></name>\n")
                    .arg(language))
    { }

    void add(const QString &prefix, const Names &names)
    {
        for (auto it = names.begin(); it != names.end(); ++it) {
            m_xml += QStringLiteral("<message id=\"%1%2\"><source>%3</source><translation>%4"
                                    "</translation></message>\n")
                         .arg(prefix, it.key(), shortened(it->english).toHtmlEscaped(),
                              shortened(translated(*it)).toHtmlEscaped());
        }
    }

    [[nodiscard]] QByteArray xml() const
    {
        return (m_xml + QStringLiteral("</context></TS>\n")).toUtf8();
    }

private:
    QString translated(const Name &name)
    {
        if (m_isEnglish) {
            return name.english;
        }
        if (!m_catalogues.contains(name.catalogue)) {
            m_catalogues.insert(
                name.catalogue,
                catalogue(m_folder + QStringLiteral("iso_%1.mo").arg(name.catalogue)));
        }
        return m_catalogues.value(name.catalogue).value(name.english, name.english);
    }

    const QString m_folder;
    const bool m_isEnglish;
    QString m_xml;
    QHash<QString, QHash<QString, QString>> m_catalogues;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString share = arguments.value(1);
    const QString output = arguments.value(2);
    Names countries;
    addNames(countries, share, QStringLiteral("3166-1"));
    Names languages;
    addNames(languages, share, QStringLiteral("639-2"));
    addNames(languages, share, QStringLiteral("639-3")); // has plainer names, but not all
    for (const QString &language : arguments.mid(3)) {
        Texts texts(share, language);
        texts.add(QStringLiteral("countryname."), countries);
        texts.add(QStringLiteral("languagename."), languages);
        write(output + QStringLiteral("/regions_%1.ts").arg(language), texts.xml());
    }
    const QString codes = QStringList(countries.keys()).join(QLatin1Char(' '));
    write(output + QStringLiteral("/countrycodes.inc"), '"' + codes.toLatin1() + "\"\n");
    return 0;
}
