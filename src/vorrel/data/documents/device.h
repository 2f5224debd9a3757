// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/documents/location.h>

namespace vo::data {

/// A player or screen in the field.
class VORREL_DATACORE_EXPORT Device : public vo::data::LinkedDocument
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Device)
    QML_UNCREATABLE("Documents are made by a Context")
    Q_CLASSINFO("DocumentType", "device")
    Q_PROPERTY(QString serialNumber READ serialNumber CONSTANT)
    VO_PROPERTY(vo::data::Location *, location, setLocation)
    Q_PROPERTY(QString locationName READ locationName NOTIFY locationNameChanged STORED false)

public:
    explicit Device(Context *context);
    ~Device() override;

    /// What the device itself reports; nobody edits it.
    [[nodiscard]] QString serialNumber() const;

    /// The label of the location.
    [[nodiscard]] QString locationName() const;

    void attachDocument(Document *document) override;
    void detachDocument(Document *document) override;

Q_SIGNALS:
    void locationNameChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
