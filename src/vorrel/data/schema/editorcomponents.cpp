// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/editorcomponents_p.h>

#include <vorrel/data/base/logging_p.h>

#include <QtCore/QHash>

// The macro does not work in a namespace. A static library would lose its editors without it.
static void initializeResource()
{
    Q_INIT_RESOURCE(vorrel_editors);
}

namespace vo::data {

namespace {

using Key = QPair<const QQmlEngine *, QString>;

QUrl editorUrl(const QMetaObject &meta, const char *kind)
{
    const int index = meta.indexOfClassInfo(kind);
    const QString file = index < 0 ? QString() : QString::fromUtf8(meta.classInfo(index).value());
    return file.isEmpty() ? QUrl()
                          : QUrl(QStringLiteral("qrc:/data/lib/components/editors/") + file);
}

void logErrors(const QQmlComponent &component)
{
    const QList<QQmlError> errors = component.errors();
    for (const QQmlError &error : errors) {
        qCCritical(lcSchema, "%s line %d: %s", qPrintable(error.url().toString()), error.line(),
                   qPrintable(error.description()));
    }
}

} // namespace

EditorHandle sharedEditor(QObject *variable, const QString &type, const char *kind,
                          QQmlEngine *engine)
{
    static QHash<Key, std::weak_ptr<SharedEditor>> editors;
    const Key key { engine, type + QLatin1Char('_') + QLatin1String(kind) };
    const EditorHandle known = editors.value(key).lock();
    // A new engine may have the address of one that has gone.
    if (known && known->component && known->engine) {
        return known;
    }
    const QUrl url = editorUrl(*variable->metaObject(), kind);
    if (url.isEmpty()) {
        return {};
    }
    initializeResource();
    const QPointer<QQmlComponent> component(new QQmlComponent(engine, variable));
    component->loadUrl(url);
    if (!component || component->isError()) {
        if (component) {
            logErrors(*component);
        }
        delete component;
        return {};
    }
    const EditorHandle handle(new SharedEditor { component, engine });
    editors.insert(key, handle);
    return handle;
}

} // namespace vo::data
