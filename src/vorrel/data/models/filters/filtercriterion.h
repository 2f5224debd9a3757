// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QObject>
#include <QtQml/qqml.h>

#include <functional>

namespace vo::data {

class Document;

/// Answers one question about one document. May throw std::bad_function_call if its criterion is
/// configured beyond sense.
using FilterFunction = std::function<bool(const Document *document)>;

/// One condition of a DocumentFilter, or of a GroupedFilterCriterion. It holds configuration only:
/// for each run the filter asks it for a function that has a copy of that. Belongs to whoever makes
/// it.
///
/// A class of an application derives from it, writes createFilterFunction(), and emits
/// updateRequired() when it is configured otherwise.
class VORREL_DATACORE_EXPORT FilterCriterion : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(FilterCriterion)
    QML_UNCREATABLE("Use one of the kinds of criterion")
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(bool inverted READ inverted WRITE setInverted NOTIFY invertedChanged)

public:
    explicit FilterCriterion(QObject *parent = nullptr);
    ~FilterCriterion() override;

    /// Whether the criterion has nothing to ask as it is configured, and so is left out. False
    /// here.
    [[nodiscard]] virtual bool skip() const;
    [[nodiscard]] virtual FilterFunction createFilterFunction() const = 0;

    /// True at first.
    [[nodiscard]] bool enabled() const;
    void setEnabled(bool enabled);

    /// Whether a filter takes the opposite of the answer. Inside of a group it means nothing.
    [[nodiscard]] bool inverted() const;
    void setInverted(bool inverted);

Q_SIGNALS:
    void enabledChanged();
    void invertedChanged();
    void updateRequired();

private:
    bool m_enabled = true;
    bool m_inverted = false;
};

} // namespace vo::data
