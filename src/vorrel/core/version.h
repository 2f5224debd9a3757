// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/core/coreexport.h>

#include <QtCore/QString>

namespace vo {

/// The version of this library as a value. Documents record it as the version that wrote them.
class VORREL_CORE_EXPORT Version
{
public:
    /// The version that this library was built as, "1.0.0" and so on.
    static Version currentVersion();

    /// Major, minor and patch number, joined with dots.
    [[nodiscard]] QString versionString() const;
    operator QString() const { return versionString(); }

private:
    explicit Version(const QString &text)
        : m_text(text)
    { }

    QString m_text;
};

} // namespace vo
