// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/MapCamera.h"

#include <QSGGeometryNode>
#include <QSGTexture>
#include <QSGTransformNode>

#include <array>
#include <memory>

/// The quads of all markers under one matrix. Each vertex carries the level from which its marker shows and its
/// number, so that neither zooming nor hiding a few markers touches the geometry.
class MarkerNode : public QSGTransformNode
{
public:
    MarkerNode();
    ~MarkerNode() override;

    /// Takes the texture over. Its cells measure `cellPixels` device pixels; markers stand `liftPixels` above their
    /// position.
    void setAtlas(QSGTexture *texture, int rows, int cellPixels, double liftPixels);
    /// Builds the geometry anew. For each marker, the newest first: its world point, the level of MarkerThinning from
    /// which it shows, its picture in the atlas. Gives the bytes written.
    qint64 setMarkers(const std::vector<QPointF> &positions, const std::vector<quint8> &levels,
                      const std::vector<quint16> &cells);
    /// The numbers of markers that are not drawn, at most four.
    void setHidden(const std::vector<qsizetype> &numbers);
    void setCamera(const MapCamera &camera);

    /// What the shader needs beside the matrix.
    struct Parameters
    {
        std::unique_ptr<QSGTexture> atlas;
        int atlasRows = 1;
        float cellPixels = 0;
        float liftPixels = 0;
        float level = 0;
        std::array<float, 4> hidden{-1, -1, -1, -1};
    };

private:
    Parameters m_parameters;
    QSGGeometryNode *m_quads;
    QPointF m_origin;
};
