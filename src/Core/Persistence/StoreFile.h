// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"

#include <SQLiteCpp/Database.h>

/// Opens a connection to the store at `location`, making its table when there is none. Throws StoreError, and leaves
/// the file as it was, when it cannot serve: see ModelContainer.
SQLite::Database openStore(const QString &location);

/// A location for a store without a file, of which several connections see the same rows. It lives as long as one of
/// them does.
QString newInMemoryLocation();

/// What went wrong with the store at `location`, for people.
StoreError storeError(const QString &location, const char *reason);
