// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include <vorrel/core/version.h>

namespace vo {

Version Version::currentVersion()
{
    return Version(QStringLiteral(VORREL_VERSION));
}

QString Version::versionString() const
{
    return m_text;
}

} // namespace vo
