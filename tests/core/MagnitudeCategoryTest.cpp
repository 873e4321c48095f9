// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/MagnitudeCategory.h"

#include <QTest>

#include <limits>

class MagnitudeCategoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerBoundsBelongToTheirBand_data()
    {
        QTest::addColumn<double>("magnitude");
        QTest::addColumn<QString>("rawValue");
        const auto row = [](const char *name, double magnitude, const char *rawValue) {
            QTest::newRow(name) << magnitude << QString::fromLatin1(rawValue);
        };
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
        QFETCH(double, magnitude);
        QTEST(MagnitudeCategory::from(magnitude).rawValue(), "rawValue");
    }

    void onlyTheExactRawValuesAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isRead");
        for (const char *text : {"micro", "low", "moderate", "strong", "major"})
            QTest::newRow(text) << QString::fromLatin1(text) << true;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("in capitals") << QStringLiteral("Major") << false;
        QTest::newRow("with a blank") << QStringLiteral("major ") << false;
        QTest::newRow("cut off") << QStringLiteral("majo") << false;
        QTest::newRow("a label") << QStringLiteral("Leve") << false;
    }

    void onlyTheExactRawValuesAreRead()
    {
        QFETCH(QString, text);
        QFETCH(bool, isRead);
        const std::optional<MagnitudeCategory> category = MagnitudeCategory::fromRawValue(text);
        QCOMPARE(category.has_value(), isRead);
        if (isRead)
            QCOMPARE(category->rawValue(), text);
    }
};

QTEST_GUILESS_MAIN(MagnitudeCategoryTest)
#include "MagnitudeCategoryTest.moc"
