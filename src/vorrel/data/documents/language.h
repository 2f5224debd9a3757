// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QUrl>

namespace vo::data {

/// A language of ISO 639-1, by its code of two lower-case letters.
class VORREL_DATACORE_EXPORT Language : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Language)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "language")
    VO_PROPERTY(QString, code, setCode)
    Q_PROPERTY(QString name READ name CONSTANT STORED false)
    Q_PROPERTY(QUrl flag READ flag CONSTANT STORED false)

public:
    explicit Language(Context *context);
    ~Language() override;

    /// In the language of the user; the code itself if it is unknown. Set the code of a new
    /// document before anybody shows this and the flag: they tell of no change.
    [[nodiscard]] QString name() const;

    /// That of the country in which most people speak the language; see Country::flag. Empty
    /// without one, as for Esperanto.
    [[nodiscard]] QUrl flag() const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
