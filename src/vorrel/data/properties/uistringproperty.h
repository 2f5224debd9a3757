// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/properties/propertybase.h>

#include <QtCore/QMap>

namespace vo::data {

/// A stored text in several languages, read in the one of the system locale. Its edits are not
/// recorded for undo.
class VORREL_DATACORE_EXPORT UiStringProperty : public PropertyBase
{
public:
    UiStringProperty(const char *name, Document *document);

    /// The text for the system locale ("de_AT"), else for its language ("de"), else the one under
    /// "_". Empty below ReadAccess.
    [[nodiscard]] QString get() const;

    /// The text under exactly this key.
    [[nodiscard]] QString value(const QString &key) const;
    [[nodiscard]] bool contains(const QString &key) const;

    /// These do nothing below WriteAccess.
    void insert(const QString &key, const QString &text);
    bool remove(const QString &key);
    void clear();

    [[nodiscard]] int type() const override;
    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;

    /// Shares the texts of \p source; not an edit.
    void copy(PropertyBase *source) override;

private:
    QMap<QString, QString> m_texts;
};

} // namespace vo::data
