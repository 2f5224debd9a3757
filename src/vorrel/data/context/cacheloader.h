// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <vorrel/data/context/loader.h>

#include <memory>

namespace vo::data {

/// Answers from the document cache. Declines what is not in it, and everything under
/// BypassDocumentCachePolicy. An entry that cannot be used is dropped and reported as failed, so
/// that the database is asked next.
class VORREL_DATACORE_EXPORT CacheLoader : public Loader
{
    Q_OBJECT
public:
    explicit CacheLoader(Context *context);
    ~CacheLoader() override;

    bool load(const QString &id) override;

private:
    void runSlice();

    struct Private;
    const std::unique_ptr<Private> d;
};

} // namespace vo::data
