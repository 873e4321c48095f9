// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"

#include <QObject>
#include <QtQmlIntegration>

#include <memory>

/// The phone-sized root behind its QML: its repository, and the question of the first launch.
class MainTabScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container READ container WRITE setContainer NOTIFY containerChanged REQUIRED)
    Q_PROPERTY(EarthquakeRepository *repository READ repository NOTIFY containerChanged)

public:
    explicit MainTabScreen(QObject *parent = nullptr);
    ~MainTabScreen() override;

    ModelContainer *container() const { return m_container; }
    /// The repository of this root, over the container's main context; null until there is a container.
    EarthquakeRepository *repository() const { return m_repository.get(); }

    /// Can be set once.
    void setContainer(ModelContainer *container);

Q_SIGNALS:
    void containerChanged();

private:
    ModelContainer *m_container = nullptr;
    std::unique_ptr<EarthquakeRepository> m_repository;
};
