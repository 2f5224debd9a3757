// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/core/iincubatable.h>
#include <vorrel/data/core/inlinedocument.h>
#include <vorrel/data/properties/documentlistpropertybase.h>
#include <vorrel/data/properties/typeddocumentproperty.h>

#include <QtCore/QJsonArray>

#include <optional>

namespace vo::data {

/// What InlineDocumentListProperty does for all classes of elements.
class VORREL_DATACORE_EXPORT InlineDocumentListPropertyBase : public DocumentListPropertyBase,
                                                              public IIncubatable
{
public:
    using Target = InlineDocument;

    InlineDocumentListPropertyBase(const char *name, Document *document);
    ~InlineDocumentListPropertyBase() override;

    void fromJson(const QJsonValue &json) override;
    [[nodiscard]] QJsonValue toJson() const override;
    void aggregateReferences(QSet<QString> &ids) const override;
    void copy(PropertyBase *source) override;
    void clear() override;
    [[nodiscard]] bool isComplete() const override;
    [[nodiscard]] QList<Document *> referencedDocuments() const override;
    void removeDocument(Document *document) override;
    bool incubate(Context *context) override;

    [[nodiscard]] Document *at(int index) const override;
    [[nodiscard]] int indexOf(Document *document) const override;
    bool insert(Document *document, int index) override;
    bool remove(Document *document) override;
    bool move(int from, int to) override;
    [[nodiscard]] int count() const;

protected:
    using Elements = QList<InlineDocument *>;

    /// All elements, made now if they were not yet. None if a slot destroyed the document.
    [[nodiscard]] Elements elements() const;
    [[nodiscard]] virtual bool accepts(const Target *document) const = 0;

private:
    struct Loader
    {
        QJsonArray array;
        int next = 0;
        Elements made;
    };

    void inlineDocumentDestroyed(InlineDocument *document) override;
    [[nodiscard]] bool finishLoading() const;
    void makeNext();
    void commit();
    void dropLoader();
    bool replace(const QList<QPointer<InlineDocument>> &elements);
    bool insertAt(InlineDocument *document, int index);
    bool removeElement(InlineDocument *document);
    bool moveElement(int from, int to);

    Elements m_elements;
    std::optional<Loader> m_loader; // stored elements that are being made
};

/// A stored field that holds an ordered list of inline documents of class \a T. Elements of stored
/// data are made in slices, or when the list is asked for.
template <typename T>
class InlineDocumentListProperty : public TypedDocumentProperty<T, InlineDocumentListPropertyBase>
{
public:
    using TypedDocumentProperty<T, InlineDocumentListPropertyBase>::TypedDocumentProperty;

    /// Empty below ReadAccess.
    [[nodiscard]] QList<T *> get() const
    {
        QList<T *> list;
        if (this->canRead()) {
            const auto all = this->elements();
            for (InlineDocument *element : all) {
                list.append(static_cast<T *>(element));
            }
        }
        return list;
    }
};

} // namespace vo::data
