// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/MagnitudeCategory.h"
#include "Support/Table.h"

#include <QTest>

#include <limits>

class MagnitudeCategoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerBoundsBelongToTheirBand_data()
    {
        const Table<double, QString> row;
        row("below zero", -0.5, "micro");
        row("just below 2", 1.9999, "micro");
        row("2", 2.0, "low");
        row("beyond the text of the band", 3.95, "low");
        row("just below 4", 3.9999, "low");
        row("4", 4.0, "moderate");
        row("just below 6", 5.9999, "moderate");
        row("6", 6.0, "strong");
        row("just below 7", 6.9999, "strong");
        row("7", 7.0, "major");
        row("no number", std::numeric_limits<double>::quiet_NaN(), "major");
    }

    void lowerBoundsBelongToTheirBand()
    {
        const auto [magnitude, expected] = Table<double, QString>::current();
        QCOMPARE(MagnitudeCategory::from(magnitude).rawValue(), expected);
    }

    void onlyTheExactRawValuesAreRead()
    {
        for (const char *name : {"micro", "low", "moderate", "strong", "major"}) {
            const QString text = QString::fromLatin1(name);
            QCOMPARE(MagnitudeCategory::fromRawValue(text).value().rawValue(), text);
        }
        for (const char *name : {"", "Major", "majo", "Leve"})
            QVERIFY2(!MagnitudeCategory::fromRawValue(QString::fromLatin1(name)), name);
    }
};

QTEST_GUILESS_MAIN(MagnitudeCategoryTest)
#include "MagnitudeCategoryTest.moc"
