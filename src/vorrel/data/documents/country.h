// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QStringList>
#include <QtCore/QUrl>

namespace vo::data {

/// A country of ISO 3166-1:
///
///     Row {
///         Image { source: country.flag }
///         Text { text: country.name + " (" + country.nativeName + ")" }
///     }
class VORREL_DATACORE_EXPORT Country : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Country)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "country")
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY codeChanged)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged STORED false)
    Q_PROPERTY(QString nativeName READ nativeName NOTIFY nativeNameChanged STORED false)
    Q_PROPERTY(QUrl flag READ flag NOTIFY flagChanged STORED false)

public:
    explicit Country(Context *context);
    ~Country() override;

    /// The codes of all countries, sorted.
    [[nodiscard]] static QStringList knownCodes();

    /// Two upper-case letters.
    [[nodiscard]] QString code() const;

    /// Takes lower-case letters, too. An unknown code is refused with a warning.
    bool setCode(const QString &text);

    /// In the language of the user; empty without a known code.
    [[nodiscard]] QString name() const;

    /// In the language that most people speak there; empty if Qt does not know it.
    [[nodiscard]] QString nativeName() const;

    /// "qrc:/data/lib/images/flags/AT.svg". The pictures are the application's: there are none in
    /// the library.
    [[nodiscard]] QUrl flag() const;

Q_SIGNALS:
    void codeChanged();
    void nameChanged();
    void nativeNameChanged();
    void flagChanged();

private:
    void updateInferredProperties();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
