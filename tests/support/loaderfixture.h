// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include "support/contextfixture.h"

#include <vorrel/data/context/loader.h>

namespace vo::test {

/// A loader without a queue, and what it said, in order: "loaded a", "notFound b", "failed c".
class LoaderFixture : public ContextFixture
{
public:
    /// \p make gives the loader for a Context.
    explicit LoaderFixture(const std::function<data::Loader *(data::Context *)> &make);

    /// Offers all of \p ids. True if the loader takes them all.
    using ContextFixture::load;
    [[nodiscard]] bool load(const QStringList &ids);

    /// Offers each id again that fails, as the queue does.
    void loadAgainWhatFails();

    QPointer<data::Loader> loader;
    QStringList answers;
    QString deadly; // the answer that destroys the Context

private:
    void note(const QString &answer, const QString &id);
};

} // namespace vo::test
