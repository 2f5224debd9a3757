// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/change.h>

#include <QtCore/QByteArray>
#include <QtCore/QJsonValue>

namespace vo::data {

class LinkedDocument;

/// The edit of one field of a struct. Edits of the same field merge, unless one of them sets or
/// drops a reference, or the struct was replaced in between: these depend on what happened before.
class VORREL_DATACORE_EXPORT StructValueChange : public Change
{
public:
    /// The undefined value stands for no field.
    StructValueChange(LinkedDocument *document, const QString &key, const QString &field,
                      const QJsonValue &oldValue, const QJsonValue &newValue);
    ~StructValueChange() override;

    void apply() override;
    void unapply() override;
    [[nodiscard]] int type() const override;
    [[nodiscard]] bool canMergeWith(const Change *other) const override;
    void mergeWith(const Change *other) override;
    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] quint64 uniqueKey() const override;

private:
    void assign(const QJsonValue &value, int edition);
    [[nodiscard]] LinkedDocument *linkedDocument() const;
    [[nodiscard]] bool holdsReference() const;

    const QByteArray m_key;   // UTF-8
    const QByteArray m_field; // UTF-8
    const QJsonValue m_oldValue;
    QJsonValue m_newValue;
    int m_formerEdition; // of the data, before this edit
    int m_edition;       // and behind it
};

} // namespace vo::data
