// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/PersistenceController.h"

#include "Core/Persistence/ModelContext.h"
#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {
std::function<void(const QString &)> &failureHandler()
{
    static std::function<void(const QString &)> handler;
    return handler;
}

/// Nothing that a program without a store has made so far needs to be torn down, and no destructor may still write.
[[noreturn]] void endProgram(const StoreError &error)
{
    const QString message = QStringLiteral("Failed to create ModelContainer: ") + QString::fromUtf8(error.what());
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    std::fflush(stderr);
    if (failureHandler())
        failureHandler()(message);
    std::_Exit(EXIT_FAILURE);
}

std::unique_ptr<ModelContainer> openContainer(const ModelContainer::Configuration &configuration)
{
    try {
        return std::make_unique<ModelContainer>(configuration);
    } catch (const StoreError &error) {
        endProgram(error);
    }
}

void insertSamples(ModelContext &context)
{
    const Instant now = Platform::current().clock.now();
    context.insert({QStringLiteral("es2025prev001"), moved(now, -3600), 28.45, -14.02, 12.0, 3.1,
                    QStringLiteral("mbLg"), QStringLiteral("II"), QStringLiteral("NW LANZAROTE"), now});
    context.insert({QStringLiteral("es2025prev002"), moved(now, -7200), 27.88, -17.92, 8.0, 4.5, QStringLiteral("Mw"),
                    QStringLiteral("IV"), QStringLiteral("SW HIERRO"), now});
    context.insert({QStringLiteral("es2025prev003"), moved(now, -10800), 28.12, -16.55, 20.0, 2.0,
                    QStringLiteral("mbLg"), std::nullopt, QStringLiteral("NE TENERIFE"), now});
}
}

/// A type of its own, since the platform keeps one shared instance of each type.
struct PersistenceController::Preview
{
    PersistenceController controller{true};
};

PersistenceController &PersistenceController::shared()
{
    return Platform::shared<PersistenceController>([] { return new PersistenceController; });
}

PersistenceController &PersistenceController::preview()
{
    return Platform::shared<Preview>([] {
               auto *preview = new Preview;
               insertSamples(preview->controller.container().mainContext());
               return preview;
           })
        .controller;
}

void PersistenceController::setFailureHandler(std::function<void(const QString &)> handler)
{
    failureHandler() = std::move(handler);
}

PersistenceController::PersistenceController(bool inMemory)
    : m_container(openContainer({.isStoredInMemoryOnly = inMemory, .path = Platform::current().storePath}))
{
}
