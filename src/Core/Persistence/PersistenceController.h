// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"

#include <functional>
#include <memory>

/// Owns the one store.
class PersistenceController
{
public:
    /// The store of the running program, at the installed platform's path. A store that cannot be opened ends the
    /// program: one line on standard error, exit status 1, the file untouched.
    static PersistenceController &shared();
    /// Three sample events in memory, for looking at a screen without a store.
    static PersistenceController &preview();

    /// Called with that line, once it is written and before the program ends, to show it where there is a screen.
    static void setFailureHandler(std::function<void(const QString &message)> handler);

    ModelContainer &container() { return *m_container; }

private:
    struct Preview;

    explicit PersistenceController(bool inMemory = false);

    std::unique_ptr<ModelContainer> m_container;
};
