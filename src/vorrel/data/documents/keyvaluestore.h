// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>

#include <QtCore/QStringList>
#include <QtCore/QVariant>

namespace vo::data {

/// Settings of an application: JSON values by text keys, in one document.
class VORREL_DATACORE_EXPORT KeyValueStore : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(KeyValueStore)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "keyvaluestore")
    Q_PROPERTY(QJsonObject data READ data NOTIFY dataChanged)
    Q_PROPERTY(QStringList keys READ keys NOTIFY dataChanged STORED false)

public:
    explicit KeyValueStore(Context *context);
    ~KeyValueStore() override;

    [[nodiscard]] QJsonObject data() const;

    /// Sorted.
    [[nodiscard]] QStringList keys() const;

    /// Invalid for an unknown key.
    Q_INVOKABLE [[nodiscard]] QVariant value(const QString &key) const;

    /// Both are edits and give false when they change nothing or access is missing. What JSON
    /// cannot hold is stored as null.
    Q_INVOKABLE bool setValue(const QString &key, const QVariant &value);
    Q_INVOKABLE bool clearValue(const QString &key);

Q_SIGNALS:
    void dataChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
