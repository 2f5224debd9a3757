// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/module/texts_p.h>

#include <vorrel/data/base/textids_p.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

// The macro does not work in a namespace. A static library would lose its texts without it.
static void initializeResource()
{
    Q_INIT_RESOURCE(vorrel_texts);
}

namespace vo::data {

namespace {

/// Each status of HTTP is one of a class, and means the first of it to those who do not know it.
QByteArray firstOfClass(const QByteArray &id)
{
    const QByteArray prefix = textids::networkErrorPrefix;
    const int status = id.startsWith(prefix) ? id.mid(prefix.size()).toInt() : 0;
    constexpr int firstError = 400;
    constexpr int firstServerError = 500;
    if (status < firstError) {
        return {};
    }
    return prefix + QByteArray::number(status < firstServerError ? firstError : firstServerError);
}

void installInApplication()
{
    // QML may load the plugin on another thread, which must not touch the application.
    QCoreApplication *application = QCoreApplication::instance();
    QMetaObject::invokeMethod(application, [application] {
        // It counts as empty there, which spares the application a LanguageChange: nobody can have
        // shown one of these texts yet.
        QCoreApplication::installTranslator(new Texts(application));
    });
}

} // namespace

Texts::Texts(QObject *parent)
    : QTranslator(parent)
{
    const QString folder = QStringLiteral(":/vorrel/texts");
    initializeResource();
    static_cast<void>(
        m_user.load(QLocale(), QStringLiteral("vorrel"), QStringLiteral("_"), folder));
    static_cast<void>(m_english.load(QStringLiteral("vorrel_en"), folder));
}

void Texts::install()
{
    qAddPreRoutine(installInApplication);
}

QString Texts::translate(const char * /*context*/, const char *sourceText,
                         const char * /*disambiguation*/, int n) const
{
    const QString own = text(sourceText, n);
    const QByteArray other = own.isNull() ? firstOfClass(sourceText) : QByteArray();
    return other.isEmpty() ? own : text(other.constData(), n);
}

QString Texts::text(const char *id, int n) const
{
    const QString translated = m_user.translate(nullptr, id, nullptr, n);
    return translated.isNull() ? m_english.translate(nullptr, id, nullptr, n) : translated;
}

} // namespace vo::data
