// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QTranslator>

namespace vo::data {

/// The texts of the library, for qtTrId(): in the language of the user, else in English. They lie
/// in translations/. A translator that the application installs later comes before it.
class Texts : public QTranslator
{
public:
    /// Chooses the language by QLocale().
    explicit Texts(QObject *parent);

    /// Gives the application its texts, now or as soon as there is one.
    static void install();

    [[nodiscard]] QString translate(const char *context, const char *sourceText,
                                    const char *disambiguation, int n) const override;

private:
    [[nodiscard]] QString text(const char *id, int n) const;

    QTranslator m_user;
    QTranslator m_english;
};

} // namespace vo::data
