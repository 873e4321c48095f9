// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tour.h"

#include "Scenes.h"
#include "Stage.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>

#include <cstdio>

namespace {
const QSize wholeSize(1100, 720);

QStringList warnings;

void noteWarning(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        warnings.append(message);
}

void report(const QString &line)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(line));
}

bool isAtTwiceTheScale()
{
    return qFuzzyCompare(qGuiApp->devicePixelRatio(), 2.0);
}
}

struct Tour::Variant
{
    const char *name;
    Appearance::ColorScheme scheme;
    QSize size;
};

Tour::Tour(const QString &folder, const QString &only)
    : m_folder(folder)
    , m_only(only)
{
}

int Tour::run()
{
    using enum Appearance::ColorScheme;
    const std::vector<Variant> variants = {
        {"light", light, wholeSize},
        {"dark", dark, wholeSize},
        {"800x600", light, QSize(800, 600)},
        {"480x720", light, QSize(480, 720)},
        {"dark-800x600", dark, QSize(800, 600)},
        {"dark-480x720", dark, QSize(480, 720)},
    };
    const std::vector<Variant> largeVariants = {{"light@2x", light, wholeSize}, {"dark@2x", dark, wholeSize}};

    if (!QDir().mkpath(m_folder)) {
        report(QStringLiteral("cannot make the folder %1").arg(m_folder));
        return EXIT_FAILURE;
    }
    const QtMessageHandler before = qInstallMessageHandler(noteWarning);
    for (const Variant &variant : isAtTwiceTheScale() ? largeVariants : variants)
        take(variant);
    qInstallMessageHandler(before);
    const int largeFailures = isAtTwiceTheScale() ? 0 : runAtTwiceTheScale();
    return m_failures == 0 && largeFailures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

void Tour::take(const Variant &variant)
{
    for (const Scene &scene : scenes()) {
        const QString name = QLatin1String(scene.name) + QLatin1Char('-') + QLatin1String(variant.name);
        if (!name.startsWith(m_only) || (scene.onlySize.isValid() && variant.size != wholeSize))
            continue;
        warnings.clear();
        try {
            Stage stage(scene.onlySize.isValid() ? scene.onlySize : variant.size);
            stage.world.appearance.setColorScheme(variant.scheme);
            stage.world.appearance.setReducedMotion(true);
            for (const Scene::Step &step : scene.steps)
                step(stage);
            if (!stage.picture().save(QDir(m_folder).filePath(name + QStringLiteral(".png"))))
                throw StageError(QStringLiteral("the picture cannot be written"));
        } catch (const std::exception &error) {
            warnings.append(QString::fromUtf8(error.what()));
        }
        for (const QString &warning : std::as_const(warnings))
            report(name + QStringLiteral(": ") + warning);
        m_failures += warnings.isEmpty() ? 0 : 1;
    }
}

int Tour::runAtTwiceTheScale() const
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    QStringList arguments = {QStringLiteral("--tour"), m_folder};
    if (!m_only.isEmpty())
        arguments.append(m_only);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    child.waitForFinished(-1);
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : EXIT_FAILURE;
}
