// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/World.h"
#include "orvaliaApp.h"

#include <QGuiApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>

#include <cstdio>

namespace {
QList<QQuickItem *> shownItemsOf(const char *className, QQuickItem *root)
{
    QList<QQuickItem *> found;
    if (root->isVisible() && root->inherits(className))
        found.append(root);
    for (QQuickItem *child : root->childItems())
        found += shownItemsOf(className, child);
    return found;
}

/// Starts over a file that is no store, tells what shows and presses the first button.
int startOverJunk()
{
    World world;
    Platform::current().storePath = world.folder.filePath(QStringLiteral("junk"));
    QFile junk(Platform::current().storePath);
    if (!junk.open(QFile::WriteOnly) || junk.write("no store") < 0)
        return 2;
    junk.close();

    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&look] {
        QWindowList windows = QGuiApplication::topLevelWindows();
        windows.removeIf([](const QWindow *window) { return !window->isVisible(); });
        auto *window = windows.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(windows.first());
        if (!window || !window->isExposed())
            return;
        look.stop();
        const QList<QQuickItem *> buttons = shownItemsOf("PressableItem", window->contentItem());
        std::printf("windows: %d\nbuttons: %d\n", int(windows.size()), int(buttons.size()));
        for (const QQuickItem *text : shownItemsOf("QQuickText", window->contentItem()))
            std::printf("text: %s\n", qUtf8Printable(text->property("text").toString()));
        std::fflush(stdout);
        QTest::mouseClick(window, Qt::LeftButton, {}, buttons.value(0)->mapToScene(QPointF(5, 5)).toPoint());
    });
    look.start(10);
    orvaliaApp app;
    return app.run();
}
}

class FailedStartTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyTheMessageShowsAndItsButtonEndsTheProgram()
    {
        const QTemporaryDir runtime;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("startOverJunk")});
        QVERIFY(process.waitForFinished(120'000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 1);
        const QString shown = QString::fromUtf8(process.readAllStandardOutput());
        const QString said = QString::fromUtf8(process.readAllStandardError()).trimmed();
        QVERIFY2(said.startsWith(QStringLiteral("Failed to create ModelContainer: ")), qUtf8Printable(said));
        QCOMPARE(shown, QStringLiteral("windows: 1\nbuttons: 1\ntext: %1\ntext: Cerrar\n").arg(said));
    }
};

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    if (argc == 2 && QByteArray(argv[1]) == "startOverJunk")
        return startOverJunk();
    FailedStartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "FailedStartTest.moc"
