// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/inlinedocument.h>

namespace vo::data {

/// A text in several languages, by language code. A property of texts holds it.
class VORREL_DATACORE_EXPORT LangString : public vo::data::InlineDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LangString)
    QML_UNCREATABLE("Inline documents are made by the properties that hold them")
    Q_CLASSINFO("DocumentType", "langstring")
    Q_PROPERTY(QJsonObject items READ items NOTIFY itemsChanged)

public:
    explicit LangString(Document *parent);
    ~LangString() override;

    /// All texts by language.
    [[nodiscard]] QJsonObject items() const;

    /// Empty if there is none in \p language.
    Q_INVOKABLE [[nodiscard]] QString text(const QString &language) const;

    /// An edit. False below WriteAccess and for an equal text.
    Q_INVOKABLE bool setText(const QString &text, const QString &language);

    /// The text for the system locale ("de_AT"), else for its language ("de"), else the English,
    /// else the German one.
    [[nodiscard]] QString localeText() const;

Q_SIGNALS:
    void itemsChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
