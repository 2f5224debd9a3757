// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#include "support/literals.h"

#include <vorrel/data/base/textids_p.h>
#include <vorrel/data/context/networkerror.h>
#include <vorrel/data/module/registration.h>

#include <QtCore/QTranslator>
#include <QtTest/QTest>

using namespace vo::data;
using namespace vo::test;

struct TestError : NetworkError
{
    using NetworkError::NetworkError;
    void tryFix() override { }
};

class tst_Texts : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyErrorHasItsTextInTheLanguageOfTheUser()
    {
        _vo_data_registerTypesdata_core(); // before there is an application
        for (const QString &locale : "de_AT fr_FR"_l) {
            QLocale::setDefault(QLocale(locale));
            int count = 0;
            const QCoreApplication application(count, nullptr);
            QTranslator other; // what is missing falls back to it
            QVERIFY(other.load(locale.startsWith("de"_s) ? ":/vorrel/texts/vorrel_en.qm"_s
                                                         : ":/vorrel/texts/vorrel_de.qm"_s));
            const char *feed = textids::changeFeedError;
            QVERIFY(qtTrId(feed) != other.translate(nullptr, feed));
            for (int i = 0; i < 1000; ++i) {
                const int reason = i % 100;
                const TestError error(ContextError::Major, i < 400 ? 399 : i,
                                      QNetworkReply::NetworkError(reason));
                const bool isKnown = (reason > 0 && reason < 10 && reason != 5) || reason == 99;
                QCOMPARE(error.errorCode(), i >= 400 ? i : isKnown ? reason : 999);
                const QByteArray id =
                    textids::networkErrorPrefix + QByteArray::number(error.errorCode());
                QVERIFY(error.errorString() != QLatin1String(id));
                QVERIFY(error.errorString() != other.translate(nullptr, id.constData()));
            }
        }
    }
};

QTEST_APPLESS_MAIN(tst_Texts)

#include "tst_texts.moc"
