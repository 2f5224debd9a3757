// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/datacoreexport.h>

#include <QtCore/QtGlobal>

namespace vo::data {

class Document;

/// Hears of every document of this thread that is destroyed. For lists, which hold plain pointers
/// to thousands of documents: a connection to each would take more memory than the list.
class VORREL_DATACORE_EXPORT DocumentWatch
{
public:
    DocumentWatch();
    virtual ~DocumentWatch();
    Q_DISABLE_COPY_MOVE(DocumentWatch)

    /// Forget \p document. Only its address is good here, and nothing may be emitted: its whole
    /// Context may be going.
    virtual void documentDestroyed(const Document *document) = 0;

    static void announce(const Document *document);
};

} // namespace vo::data
