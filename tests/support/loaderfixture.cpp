// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/loaderfixture.h"

#include "support/literals.h"

#include <algorithm>

namespace vo::test {

using data::Loader;

LoaderFixture::LoaderFixture(const std::function<Loader *(data::Context *)> &make)
    : loader(make(context()))
{
    QObject::connect(loader, &Loader::loaded, [this](const QString &id) { note("loaded "_s, id); });
    QObject::connect(loader, &Loader::notFound,
                     [this](const QString &id) { note("notFound "_s, id); });
    QObject::connect(loader, &Loader::failed, [this](const QString &id) { note("failed "_s, id); });
}

bool LoaderFixture::load(const QStringList &ids)
{
    return std::all_of(ids.begin(), ids.end(),
                       [this](const QString &id) { return loader->load(id); });
}

void LoaderFixture::loadAgainWhatFails()
{
    QObject::connect(loader, &Loader::failed, [this](const QString &id) { loader->load(id); });
}

void LoaderFixture::note(const QString &answer, const QString &id)
{
    answers << answer + id;
    if (answers.constLast() == deadly) {
        destroyContext();
    }
}

} // namespace vo::test
