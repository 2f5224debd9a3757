// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/qqml.h>

#include <functional>

namespace vo::data {

class Document;

/// Below 0 if the first document comes before the second, above 0 if behind it, and 0 if this says
/// nothing about them.
using CompareFunction = std::function<int(const Document *a, const Document *b)>;

/// One rule of the order of a DocumentSorter; those behind it decide where it says nothing. It
/// holds configuration only: for each run the sorter asks it for a function that has a copy of
/// that. Belongs to whoever makes it.
///
/// A class of an application derives from it, writes createCompareFunction(), and emits
/// updateRequired() when it is configured otherwise. For a document that has not changed, its
/// function has to go on saying the same.
class VORREL_DATACORE_EXPORT SortCriterion : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SortCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(bool descending READ descending WRITE setDescending NOTIFY descendingChanged)

public:
    explicit SortCriterion(QObject *parent = nullptr);
    ~SortCriterion() override;

    [[nodiscard]] virtual CompareFunction createCompareFunction() const = 0;

    /// True at first.
    [[nodiscard]] bool enabled() const;
    void setEnabled(bool enabled);

    /// Whether the order is the other way round. False at first.
    [[nodiscard]] bool descending() const;
    void setDescending(bool descending);

Q_SIGNALS:
    void enabledChanged();
    void descendingChanged();
    void updateRequired();

private:
    bool m_enabled = true;
    bool m_descending = false;
};

} // namespace vo::data
