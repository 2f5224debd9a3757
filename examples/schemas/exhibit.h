// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <VorrelDataCore>

/// The values of an Exhibit. All that it adds is a type string of its own.
class ExhibitValues : public vo::data::SchemaValueStore
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "exhibitvalues")

public:
    using SchemaValueStore::SchemaValueStore;
};

/// Something to show, with values that its users define.
class Exhibit : public vo::data::LinkedDocument
{
    Q_OBJECT
    Q_CLASSINFO("DocumentType", "exhibit")
    Q_PROPERTY(vo::data::SchemaValueStore *values READ values NOTIFY valuesChanged)

public:
    explicit Exhibit(vo::data::Context *context);
    ~Exhibit() override;

    /// Null once the document is deleted.
    [[nodiscard]] vo::data::SchemaValueStore *values() const;

    void initialize() override;

Q_SIGNALS:
    void valuesChanged();

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
