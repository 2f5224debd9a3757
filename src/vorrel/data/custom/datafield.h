// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/base/mocinclude.h>
#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtQml/qqml.h>

namespace vo::data {

class LinkedDocument;

/// Declares one member of a free-form struct of a LinkedDocument: its name, its type, and what is
/// stored of it. The owner, a DataStruct or a DataListModel, reads and writes the member through
/// the field and holds no values in it. Belongs to whoever makes it; one that is destroyed leaves
/// its owners.
///
/// A name or an alias is a symbol of QML: a lower-case letter or "_", then letters, digits and "_".
class VORREL_DATACORE_EXPORT DataField : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(DataField)
    QML_UNCREATABLE("Use one of the kinds of field")
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QString alias READ alias WRITE setAlias NOTIFY aliasChanged)

public:
    explicit DataField(QObject *parent = nullptr);
    ~DataField() override;

    /// Whether the two are the same value.
    [[nodiscard]] virtual bool compare(const QVariant &a, const QVariant &b) const = 0;

    /// Brings any value to the type of the field. What makes no sense gives the default, or null or
    /// an invalid value where there is none.
    [[nodiscard]] virtual QVariant convert(const QVariant &value) const = 0;

    /// Whether \p document may hold \p value. True here.
    [[nodiscard]] virtual bool acceptsValue(vo::data::LinkedDocument *document,
                                            const QVariant &value) const;

    /// The member as \p document holds it.
    [[nodiscard]] virtual QVariant read(vo::data::LinkedDocument *document,
                                        const QString &structId) const = 0;

    /// Stores a value that convert() gave, as an edit; without a document it does nothing.
    virtual void write(vo::data::LinkedDocument *document, const QString &structId,
                       const QVariant &value) = 0;

    /// The key under which the member is stored. Empty at first.
    [[nodiscard]] QString name() const;

    /// Refuses what is no symbol with a warning in "vorrel.data.custom", and so the empty text.
    void setName(const QString &name);

    /// A further name of the member in QML. Empty at first.
    [[nodiscard]] QString alias() const;

    /// As setName(): an alias can be changed but not taken away.
    void setAlias(const QString &alias);

    [[nodiscard]] bool hasAlias() const;

Q_SIGNALS:
    void nameChanged(vo::data::DataField *field, const QString &oldName);
    void aliasChanged(vo::data::DataField *field, const QString &oldAlias);

    /// What values read as may have changed.
    void reevaluateRequested(vo::data::DataField *field);

protected:
    void requestReevaluation();

private:
    QString m_name;
    QString m_alias;
};

} // namespace vo::data
