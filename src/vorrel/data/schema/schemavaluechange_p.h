// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>
#include <vorrel/data/core/document.h>

#include <QtCore/QPointer>
#include <QtCore/QVariant>

namespace vo::data {

class SchemaValueStore;

/// A value of a variable. One that links to a document turns invalid when that is destroyed.
class SchemaStoredValue
{
public:
    SchemaStoredValue() = default;
    SchemaStoredValue(const QVariant &value, Document *document)
        : m_value(value)
        , m_document(document)
        , m_links(document != nullptr)
    { }

    [[nodiscard]] const QVariant &get() const
    {
        static const QVariant none;
        return m_links && !m_document ? none : m_value;
    }
    [[nodiscard]] Document *document() const { return m_document; }

private:
    QVariant m_value;
    QPointer<Document> m_document;
    bool m_links = false;
};

/// The edit of one value of a store. Edits of one value merge.
class SchemaValueChange : public Change
{
public:
    SchemaValueChange(SchemaValueStore *store, const QString &uuid,
                      const SchemaStoredValue &oldValue, const SchemaStoredValue &newValue);
    ~SchemaValueChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] int type() const override;
    [[nodiscard]] bool canMergeWith(const Change *other) const override;
    void mergeWith(const Change *other) override;
    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] quint64 uniqueKey() const override;

private:
    void assign(const SchemaStoredValue &value);

    SchemaValueStore *const m_store;
    const QString m_uuid;
    const SchemaStoredValue m_oldValue;
    SchemaStoredValue m_newValue;
};

} // namespace vo::data
