// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <QObject>
#include <QString>

#include <memory>
#include <stdexcept>
#include <unordered_map>
#include <vector>

class EarthquakeQuery;
class ModelContext;

/// The store could not be opened, read or written. what() names the file and says why, for people.
class StoreError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The file that holds the events, and the place where its contexts hear of one another. Contexts must not outlive
/// it. Main thread only.
class ModelContainer : public QObject
{
    Q_OBJECT

public:
    /// Where the events lie.
    struct Configuration
    {
        /// Leaves no file behind; `path` is then ignored.
        bool isStoredInMemoryOnly = false;
        /// The file, made with its folder when missing.
        QString path{};
    };

    /// Opens the store. Throws StoreError, and leaves the file as it was, when it is no store of this program, was
    /// written by a newer version, or cannot be read and written.
    explicit ModelContainer(const Configuration &configuration, QObject *parent = nullptr);
    ~ModelContainer() override;

    /// What SQLite opens: the path of the file, or an address of its own for a store in memory.
    QString location() const { return m_location; }

    /// The context of the screens.
    ModelContext &mainContext();

    /// Every event, newest first, kept up to date; made at the first call.
    EarthquakeQuery &earthquakes();

    /// Picks up what other processes have written since the last call; cheap when there is nothing. A store that
    /// cannot be read changes nothing.
    void refreshFromStore();

Q_SIGNALS:
    /// A context has saved: rows that are new in the store, and rows whose values were overwritten. Each row once,
    /// with the values that it has now.
    void didSave(const std::vector<Earthquake> &inserted, const std::vector<Earthquake> &replaced);
    /// A save of the main context has failed: what it should have written stays pending there.
    void didFailToSave();

private:
    friend class ModelContext;

    PersistentIdentifier identityOf(qint64 row) const;

    QString m_location;
    /// Identities of rows that were seen before they were saved. Nearly always empty.
    std::unordered_map<qint64, PersistentIdentifier> m_keptIdentities;
    std::unique_ptr<ModelContext> m_mainContext;
    std::unique_ptr<EarthquakeQuery> m_earthquakes;
};
