// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/data/schema/schemavariable.h>

#include <vorrel/data/base/logging_p.h>
#include <vorrel/data/context/context.h>
#include <vorrel/data/properties/property.h>
#include <vorrel/data/schema/editorcomponents_p.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QMetaEnum>
#include <QtCore/QRegularExpression>
#include <QtCore/QUuid>

#include <algorithm>
#include <vector>

namespace vo::data {

struct SchemaVariable::Private
{
    SchemaVariable *const q;
    Property<QString> uuid { "uuid", q };
    Property<QString> symbol { "symbol", q };
    Property<QString> name { "name", q };
    std::vector<EditorHandle> editors {};
};

SchemaVariable::SchemaVariable(Document *parent)
    : InlineDocument(parent)
    , d(new Private { this })
{
    connect(this, &SchemaVariable::nameChanged, this, &SchemaVariable::labelChanged);
}

SchemaVariable::~SchemaVariable()
{
    // Other variables may go on using what this one had made.
    for (const EditorHandle &editor : d->editors) {
        if (editor->component && editor->component->parent() == this) {
            QQmlEngine::setObjectOwnership(editor->component, QQmlEngine::CppOwnership);
            editor->component->setParent(nullptr);
        }
    }
}

VO_DEFINE_READONLY_PROPERTY(SchemaVariable, QString, uuid)
VO_DEFINE_PROPERTY(SchemaVariable, QString, name, setName)
VO_DEFINE_READONLY_PROPERTY(SchemaVariable, QString, symbol)

bool SchemaVariable::setSymbol(const QString &symbol)
{
    static const QRegularExpression pattern(QStringLiteral("\\A[a-z][a-zA-Z0-9_]{2,63}\\z"));
    if (!pattern.match(symbol).hasMatch()) {
        qCWarning(lcSchema, "%s is not a valid symbolic name", qPrintable(symbol));
        return false;
    }
    return d->symbol.set(symbol);
}

QString SchemaVariable::label() const
{
    return name();
}

bool SchemaVariable::setLabel(const QString &label)
{
    return setName(label);
}

void SchemaVariable::setUuid(const QString &uuid)
{
    d->uuid.fromJson(uuid);
}

QString SchemaVariable::storedUuid() const
{
    return d->uuid.stored();
}

QString SchemaVariable::storedSymbol() const
{
    return d->symbol.stored();
}

void SchemaVariable::initialize()
{
    InlineDocument::initialize();
    if (storedUuid().isEmpty()) {
        setUuid(QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()));
    }
}

Document *SchemaVariable::linkedDocument(const QVariant & /*value*/) const
{
    return nullptr;
}

bool SchemaVariable::valuesEqual(const QVariant &a, const QVariant &b) const
{
    return a == b;
}

QVariant SchemaVariable::sanitize(const QVariant &value) const
{
    return value;
}

QVariant SchemaVariable::refuse(const QJsonObject &object) const
{
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
    qCWarning(lcSchema, "Document %s: %s is no value of the variable %s of type %s",
              id().constData(), json.constData(), qPrintable(uuid()), qPrintable(type()));
    return defaultValue();
}

QQmlComponent *SchemaVariable::getEditorComponent(EditorType type)
{
    const char *kind = QMetaEnum::fromType<EditorType>().valueToKey(type);
    QQmlEngine *engine = qmlEngine(context());
    if (!engine) {
        // The Context may have been made in C++, and this variable be known in QML all the same.
        engine = qobject_cast<QQmlEngine *>(qjsEngine(this));
    }
    if (!kind || !engine) {
        return nullptr;
    }
    const QPointer<SchemaVariable> self(this);
    const EditorHandle editor = sharedEditor(this, this->type(), kind, engine);
    if (!self || !editor) {
        return nullptr;
    }
    if (std::find(d->editors.begin(), d->editors.end(), editor) == d->editors.end()) {
        d->editors.push_back(editor);
    }
    return editor->component;
}

} // namespace vo::data

#include "moc_schemavariable.cpp"
