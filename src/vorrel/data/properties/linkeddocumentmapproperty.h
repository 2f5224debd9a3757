// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iincubatable.h>
#include <vorrel/data/core/linkeddocument.h>
#include <vorrel/data/properties/documentmappropertybase.h>
#include <vorrel/data/properties/typeddocumentproperty.h>

#include <QtCore/QMap>

namespace vo::data {

/// What LinkedDocumentMapProperty does for all classes of targets.
class VORREL_DATACORE_EXPORT LinkedDocumentMapPropertyBase : public DocumentMapPropertyBase,
                                                             public IIncubatable
{
public:
    using Target = LinkedDocument;

    LinkedDocumentMapPropertyBase(const char *name, Document *document);
    ~LinkedDocumentMapPropertyBase() override;

    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void copy(PropertyBase *source) override;
    void clear() override;
    [[nodiscard]] bool isComplete() const override;
    [[nodiscard]] QList<Document *> referencedDocuments() const override;
    void removeDocument(Document *document) override;
    bool incubate(Context *context) override;

    /// A null \p document removes the entry. A document that stands under another key moves.
    bool insert(const QString &key, Document *document) override;
    bool remove(const QString &key) override;
    bool rename(const QString &from, const QString &to) override;

protected:
    using Targets = QMap<QString, QPointer<LinkedDocument>>;

    /// All targets, built now if they were not yet.
    [[nodiscard]] const Targets &targets() const;
    [[nodiscard]] virtual bool accepts(const Target *document) const = 0;

private:
    void finishLoading() const;
    void buildNext();
    bool assign(const Targets &targets);
    bool exchange(const Targets &targets);
    bool edit(const Targets &targets);

    Targets m_targets;
    QMap<QString, QByteArray> m_pendingIds; // stored entries that are being built
    Targets m_built;                        // those of them that are
};

/// A stored field that points at linked documents of class \a T by text keys.
template <typename T>
class LinkedDocumentMapProperty : public TypedDocumentProperty<T, LinkedDocumentMapPropertyBase>
{
public:
    using TypedDocumentProperty<T, LinkedDocumentMapPropertyBase>::TypedDocumentProperty;

    /// Null for an unknown key and below ReadAccess.
    [[nodiscard]] T *value(const QString &key) const
    {
        return this->canRead() ? static_cast<T *>(this->targets().value(key).data()) : nullptr;
    }

    /// Empty below ReadAccess.
    [[nodiscard]] QMap<QString, T *> get() const
    {
        QMap<QString, T *> map;
        if (this->canRead()) {
            const auto &all = this->targets();
            for (auto it = all.begin(); it != all.end(); ++it) {
                if (it.value()) {
                    map.insert(it.key(), static_cast<T *>(it.value().data()));
                }
            }
        }
        return map;
    }
};

} // namespace vo::data
