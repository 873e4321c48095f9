// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Outcome
{
    int status = -1;
    QString errors;
};

Outcome runDemo(const QStringList &arguments, const char *platform)
{
    QProcess demo;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QLatin1String(platform));
    demo.setProcessEnvironment(environment);
    demo.start(QStringLiteral(DEMO_PROGRAM), arguments);
    if (!demo.waitForFinished(120000) || demo.exitStatus() != QProcess::NormalExit)
        return {};
    return {demo.exitCode(), QString::fromUtf8(demo.readAllStandardError())};
}
}

class TourTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyVariantIsAPictureOfItsSize()
    {
        const QTemporaryDir folder;
        const Outcome tour = runDemo({QStringLiteral("--tour"), folder.path(), QStringLiteral("list-empty")}, "xcb");
        QVERIFY2(tour.status == 0, qPrintable(tour.errors));
        const std::map<QString, QSize> sizes = {
            {QStringLiteral("light"), QSize(1100, 720)},       {QStringLiteral("dark"), QSize(1100, 720)},
            {QStringLiteral("800x600"), QSize(800, 600)},      {QStringLiteral("480x720"), QSize(480, 720)},
            {QStringLiteral("dark-800x600"), QSize(800, 600)}, {QStringLiteral("dark-480x720"), QSize(480, 720)},
            {QStringLiteral("light@2x"), QSize(2200, 1440)},   {QStringLiteral("dark@2x"), QSize(2200, 1440)},
        };
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), qsizetype(sizes.size()));
        for (const auto &[variant, size] : sizes)
            QCOMPARE(QImage(folder.filePath(QStringLiteral("list-empty-%1.png").arg(variant))).size(), size);
        QVERIFY(lightness(folder.filePath(QStringLiteral("list-empty-light.png"))) > 200);
        QVERIFY(lightness(folder.filePath(QStringLiteral("list-empty-dark.png"))) < 60);
    }

    void softwareRendererFailsTheTour()
    {
        const QTemporaryDir folder;
        const Outcome tour =
            runDemo({QStringLiteral("--tour"), folder.path(), QStringLiteral("list-empty")}, "offscreen");
        QCOMPARE(tour.status, 1);
        QVERIFY(tour.errors.contains(QStringLiteral("list-empty-light: the software renderer")));
    }

    void unknownArgumentsAreRefused()
    {
        QCOMPARE(runDemo({QStringLiteral("--tour")}, "offscreen").status, 2);
        QCOMPARE(runDemo({QStringLiteral("--quake")}, "offscreen").status, 2);
    }

private:
    /// Of the point in the middle of the lower edge, where every scheme shows its ground.
    static int lightness(const QString &file)
    {
        const QImage picture(file);
        return picture.pixelColor(picture.width() / 2, picture.height() - 2).lightness();
    }
};

QTEST_GUILESS_MAIN(TourTest)
#include "TourTest.moc"
