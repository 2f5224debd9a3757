// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/propertymacros.h>

#include <QtCore/QStringList>
#include <QtCore/QUrl>

namespace vo::data {

/// A mark that users put on documents.
class VORREL_DATACORE_EXPORT Tag : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Tag)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "tag")
    VO_PROPERTY(QString, name, setName)
    VO_PROPERTY(QUrl, icon, setIcon)
    VO_PROPERTY(QStringList, applicableTypes, setApplicableTypes)

public:
    explicit Tag(Context *context);
    ~Tag() override;

    /// Always true: applicableTypes() is advice for a user interface, and a tag fits every
    /// document.
    Q_INVOKABLE [[nodiscard]] bool appliesToType(vo::data::Document *document) const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
