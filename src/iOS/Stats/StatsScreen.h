// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/ViewModels/StatsViewModel.h"
#include "iOS/Stats/ClusterModel.h"
#include "iOS/Stats/MagnitudeStatModel.h"
#include "iOS/Stats/StatsFigures.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

/// The statistics behind their QML. The figures are reckoned when the screen appears and when the list of events
/// changes, and at no other time. Made by the QML with its screen, and dies with it.
class StatsScreen : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container MEMBER m_container REQUIRED)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY redrawn)
    Q_PROPERTY(int countLastHour READ countLastHour NOTIFY redrawn)
    Q_PROPERTY(int countLast24h READ countLast24h NOTIFY redrawn)
    Q_PROPERTY(int countLast7d READ countLast7d NOTIFY redrawn)
    Q_PROPERTY(int countLast30d READ countLast30d NOTIFY redrawn)
    Q_PROPERTY(PeakFigure peakLast24h READ peakLast24h NOTIFY redrawn)
    Q_PROPERTY(PeakFigure peakLast7d READ peakLast7d NOTIFY redrawn)
    Q_PROPERTY(MagnitudeStatModel *magnitudes READ magnitudes CONSTANT)
    Q_PROPERTY(ClusterModel *clusters READ clusters CONSTANT)
    Q_PROPERTY(bool hasClusters READ hasClusters NOTIFY redrawn)
    Q_PROPERTY(bool hasDepth READ hasDepth NOTIFY redrawn)
    Q_PROPERTY(QString averageDepth READ averageDepth NOTIFY redrawn)
    Q_PROPERTY(DepthFigure shallow READ shallow NOTIFY redrawn)
    Q_PROPERTY(DepthFigure intermediate READ intermediate NOTIFY redrawn)
    Q_PROPERTY(DepthFigure deep READ deep NOTIFY redrawn)
    Q_PROPERTY(bool showSettings MEMBER m_showSettings NOTIFY showSettingsChanged)

public:
    explicit StatsScreen(QObject *parent = nullptr);

    void classBegin() override { }
    void componentComplete() override;

    /// The store holds no event.
    bool isEmpty() const;
    int countLastHour() const { return int(m_viewModel.countLastHour()); }
    int countLast24h() const { return int(m_viewModel.countLast24h()); }
    int countLast7d() const { return int(m_viewModel.countLast7d()); }
    int countLast30d() const { return int(m_viewModel.countLast30d()); }
    PeakFigure peakLast24h() const;
    PeakFigure peakLast7d() const;
    MagnitudeStatModel *magnitudes() { return &m_magnitudes; }
    ClusterModel *clusters() { return &m_clusters; }
    bool hasClusters() const { return !m_viewModel.topClusters().empty(); }
    /// Whether there is anything to say of depths; the four below mean nothing otherwise.
    bool hasDepth() const { return m_viewModel.depthStat().has_value(); }
    /// In kilometres, to one decimal place.
    QString averageDepth() const;
    DepthFigure shallow() const;
    DepthFigure intermediate() const;
    DepthFigure deep() const;

    Q_INVOKABLE void appear();

Q_SIGNALS:
    void redrawn();
    void showSettingsChanged();

private:
    void update();
    DepthStat depth() const { return m_viewModel.depthStat().value_or(DepthStat()); }

    ModelContainer *m_container = nullptr;
    StatsViewModel m_viewModel;
    MagnitudeStatModel m_magnitudes;
    ClusterModel m_clusters;
    bool m_showSettings = false;
};
