// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtQml/QQmlPropertyMap>
#include <QtQml/qqml.h>

namespace vo::data {

class DataField;
class DataStruct;
class LinkedDocument;

/// The values of a DataStruct, each under the alias of its field or, without one, its name. QML
/// binds to them and writes them; a key that no field has any more reads as undefined.
///
/// A document that is destroyed reads as null. Belongs to its DataStruct, which calls the functions
/// below.
class VORREL_DATACORE_EXPORT CustomData : public QQmlPropertyMap
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CustomData)
    QML_UNCREATABLE("It comes with a DataStruct")

public:
    explicit CustomData(DataStruct *parent);
    ~CustomData() override;

    /// Reads all \p fields anew; only what differs is announced. Other keys are cleared.
    void update(LinkedDocument *document, const QString &structId,
                const QList<DataField *> &fields);

    /// The same for one field.
    void updateField(LinkedDocument *document, const QString &structId, const DataField *field);

    /// Stores a value that is no edit; without a key it does nothing.
    void store(const QString &key, const QVariant &value);

    using QQmlPropertyMap::clear;
    void clear();
    void clearKeys(const QStringList &keys);

protected:
    /// An edit from QML; the result is what is stored.
    QVariant updateValue(const QString &key, const QVariant &input) override;

private:
    int m_updates = 0;
};

} // namespace vo::data
