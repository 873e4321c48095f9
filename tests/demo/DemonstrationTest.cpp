// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"

#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// The built program in a folder of its own, which is not there any more afterwards.
struct Demo : QProcess
{
    explicit Demo(const QStringList &arguments, const QString &platform = u"xcb"_s)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
        for (const char *variable : {"TMPDIR", "HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            environment.insert(QLatin1String(variable), folder.path());
        setProcessEnvironment(environment);
        start(QStringLiteral(DEMO_PROGRAM), arguments);
    }

    /// Of its end; -1 when it does not end by itself.
    int status() { return waitForFinished(120000) && exitStatus() == NormalExit ? exitCode() : -1; }

    QString storePath() const
    {
        QDirIterator files(folder.path(), {u"*.sqlite"_s}, QDir::Files, QDirIterator::Subdirectories);
        return files.hasNext() ? files.next() : QString();
    }

    qint64 stored() const
    {
        const QString path = storePath();
        if (path.isEmpty())
            return 0;
        try {
            return ModelContainer({.path = path}).mainContext().fetchCount({});
        } catch (const StoreError &) {
            return 0; // just being made
        }
    }

    QTemporaryDir folder;
};

/// Of the point in the middle of the lower edge, where every scheme shows its ground.
int lightness(const QImage &picture)
{
    return picture.pixelColor(picture.width() / 2, picture.height() - 2).lightness();
}
}

class DemonstrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The whole program: it fetches the made-up page, stores it, and leaves nothing behind when it is told to end.
    void storesTheMadeUpPageAndForgetsIt()
    {
        Demo demo({});
        QTRY_VERIFY_WITH_TIMEOUT(demo.stored() >= 150, 30000);
        demo.terminate();
        QCOMPARE(demo.status(), 0);
        QCOMPARE(demo.storePath(), QString());
    }

    void everyVariantOfTheTourIsAPictureOfItsSize()
    {
        const QTemporaryDir pictures;
        Demo tour({u"--tour"_s, pictures.path(), u"list-empty"_s});
        QVERIFY2(tour.status() == 0, tour.readAllStandardError());
        const std::map<QString, QSize> sizes = {
            {u"light"_s, QSize(1100, 720)},       {u"dark"_s, QSize(1100, 720)},
            {u"800x600"_s, QSize(800, 600)},      {u"480x720"_s, QSize(480, 720)},
            {u"dark-800x600"_s, QSize(800, 600)}, {u"dark-480x720"_s, QSize(480, 720)},
            {u"light@2x"_s, QSize(2200, 1440)},   {u"dark@2x"_s, QSize(2200, 1440)},
        };
        QCOMPARE(QDir(pictures.path()).entryList(QDir::Files).size(), qsizetype(sizes.size()));
        for (const auto &[variant, size] : sizes) {
            const QImage picture(pictures.filePath(u"list-empty-%1.png"_s.arg(variant)));
            QCOMPARE(picture.size(), size);
            QVERIFY(variant.startsWith(u"dark") ? lightness(picture) < 60 : lightness(picture) > 200);
        }
    }

    void softwareRendererFailsTheTour()
    {
        const QTemporaryDir pictures;
        Demo tour({u"--tour"_s, pictures.path(), u"list-empty"_s}, u"offscreen"_s);
        QCOMPARE(tour.status(), 1);
        QVERIFY(tour.readAllStandardError().contains("list-empty-light: the software renderer"));
    }

    void unknownArgumentsAreRefused()
    {
        QCOMPARE(Demo({u"--tour"_s}).status(), 2);
        QCOMPARE(Demo({u"--quake"_s}).status(), 2);
    }
};

QTEST_GUILESS_MAIN(DemonstrationTest)
#include "DemonstrationTest.moc"
