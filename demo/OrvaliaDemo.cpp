// SPDX-License-Identifier: GPL-3.0-or-later
#include "Demonstration.h"
#include "Platform/Text/UserLocale.h"
#include "Tour.h"

#include <QGuiApplication>

#include <cstdio>

namespace {
constexpr char usage[] = "usage: orvalia-demo [--swarm] [--phone]\n"
                         "       orvalia-demo --tour FOLDER [PICTURE]\n";

int tour(const QStringList &arguments)
{
    // The pictures are those of a user on the islands, whoever takes them.
    qputenv("LC_ALL", "es_ES.UTF-8");
    qputenv("TZ", "Atlantic/Canary");
    reloadUserLocale();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return Tour(arguments[2], arguments.value(3)).run();
}
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    // The desktop knows the demonstration as the program itself.
    QGuiApplication::setApplicationName(QStringLiteral("orvalia"));
    QGuiApplication::setApplicationVersion(QStringLiteral(ORVALIA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral(ORVALIA_ID));
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.value(1) == QStringLiteral("--tour") && (argc == 3 || argc == 4))
        return tour(arguments);
    auto pace = DemoCatalogue::Pace::quiet;
    auto root = orvaliaApp::Root::desktop;
    for (const QString &argument : arguments.mid(1)) {
        if (argument == QStringLiteral("--swarm")) {
            pace = DemoCatalogue::Pace::swarm;
        } else if (argument == QStringLiteral("--phone")) {
            root = orvaliaApp::Root::phone;
        } else {
            std::fputs(usage, stderr);
            return 2;
        }
    }
    return demonstrate(pace, root);
}
