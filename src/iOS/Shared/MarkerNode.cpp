// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/MarkerNode.h"

#include "Platform/Map/MarkerThinning.h"
#include "iOS/Shared/MarkerAtlas.h"

#include <QMatrix4x4>
#include <QSGMaterial>

#include <cstring>

namespace {
struct Vertex
{
    /// World point relative to the node's origin: as 32-bit numbers, absolute ones would lose pixels close by.
    float x;
    float y;
    float number;
    quint8 column;
    quint8 row;
    /// 0 to 3: upper left, upper right, lower left, lower right.
    quint8 corner;
    quint8 level;
};

const QSGGeometry::AttributeSet &attributes()
{
    static const QSGGeometry::Attribute list[] = {
        QSGGeometry::Attribute::create(0, 2, QSGGeometry::FloatType, true),
        QSGGeometry::Attribute::create(1, 1, QSGGeometry::FloatType),
        QSGGeometry::Attribute::create(2, 4, QSGGeometry::UnsignedByteType),
    };
    static const QSGGeometry::AttributeSet set{3, sizeof(Vertex), list};
    return set;
}

class MarkerShader : public QSGMaterialShader
{
public:
    MarkerShader()
    {
        setShaderFileName(VertexStage, QStringLiteral(":/markers/marker.vert.qsb"));
        setShaderFileName(FragmentStage, QStringLiteral(":/markers/marker.frag.qsb"));
    }

    bool updateUniformData(RenderState &state, QSGMaterial *newMaterial, QSGMaterial *oldMaterial) override;
    void updateSampledImage(RenderState &state, int binding, QSGTexture **texture, QSGMaterial *newMaterial,
                            QSGMaterial *oldMaterial) override;
};

class MarkerMaterial : public QSGMaterial
{
public:
    explicit MarkerMaterial(const MarkerNode::Parameters &shared)
        : parameters(shared)
    {
        // The shader needs the whole matrix, and the quads of one node never join those of another.
        setFlag(Blending | RequiresFullMatrix | NoBatching);
    }

    QSGMaterialType *type() const override
    {
        static QSGMaterialType unique;
        return &unique;
    }
    QSGMaterialShader *createShader(QSGRendererInterface::RenderMode) const override { return new MarkerShader; }
    int compare(const QSGMaterial *other) const override { return this < other ? -1 : this > other ? 1 : 0; }

    const MarkerNode::Parameters &parameters;
};

/// As the shader's block lays it out.
struct Uniforms
{
    float matrix[16];
    float hidden[4];
    float viewport[2];
    float cellPixels;
    float liftPixels;
    float level;
    float atlasColumns;
    float atlasRows;
    float opacity;
};

bool MarkerShader::updateUniformData(RenderState &state, QSGMaterial *newMaterial, QSGMaterial *)
{
    const MarkerNode::Parameters &parameters = static_cast<MarkerMaterial *>(newMaterial)->parameters;
    Uniforms uniforms;
    std::memcpy(uniforms.matrix, state.combinedMatrix().constData(), sizeof uniforms.matrix);
    std::copy(parameters.hidden.begin(), parameters.hidden.end(), uniforms.hidden);
    uniforms.viewport[0] = float(state.viewportRect().width());
    uniforms.viewport[1] = float(state.viewportRect().height());
    uniforms.cellPixels = parameters.cellPixels;
    uniforms.liftPixels = parameters.liftPixels;
    uniforms.level = parameters.level;
    uniforms.atlasColumns = MarkerAtlas::columns;
    uniforms.atlasRows = float(parameters.atlasRows);
    uniforms.opacity = state.opacity();
    std::memcpy(state.uniformData()->data(), &uniforms, sizeof uniforms);
    return true;
}

void MarkerShader::updateSampledImage(RenderState &state, int binding, QSGTexture **texture, QSGMaterial *newMaterial,
                                      QSGMaterial *)
{
    if (binding != 1)
        return;
    QSGTexture *atlas = static_cast<MarkerMaterial *>(newMaterial)->parameters.atlas.get();
    atlas->commitTextureOperations(state.rhi(), state.resourceUpdateBatch());
    *texture = atlas;
}
}

MarkerNode::MarkerNode()
    : m_quads(new QSGGeometryNode)
{
    auto *geometry = new QSGGeometry(attributes(), 0, 0, QSGGeometry::UnsignedIntType);
    geometry->setDrawingMode(QSGGeometry::DrawTriangles);
    geometry->setVertexDataPattern(QSGGeometry::StaticPattern);
    geometry->setIndexDataPattern(QSGGeometry::StaticPattern);
    m_quads->setGeometry(geometry);
    m_quads->setMaterial(new MarkerMaterial(m_parameters));
    m_quads->setFlags(OwnsGeometry | OwnsMaterial | OwnedByParent);
    appendChildNode(m_quads);
}

MarkerNode::~MarkerNode()
{
    // Before the parameters that its material points to.
    removeAllChildNodes();
    delete m_quads;
}

void MarkerNode::setAtlas(QSGTexture *texture, int rows, int cellPixels, double liftPixels)
{
    // Cells lie on whole pixels, so that nothing between two pixels is ever asked for.
    texture->setFiltering(QSGTexture::Nearest);
    m_parameters.atlas.reset(texture);
    m_parameters.atlasRows = rows;
    m_parameters.cellPixels = float(cellPixels);
    m_parameters.liftPixels = float(liftPixels);
    m_quads->markDirty(DirtyMaterial);
}

qint64 MarkerNode::setMarkers(const std::vector<QPointF> &positions, const std::vector<quint8> &levels,
                              const std::vector<quint16> &cells)
{
    std::vector<size_t> drawn;
    drawn.reserve(positions.size());
    // Oldest first, so that newer ones come to lie above. Those that no scale shows are not worth their bytes.
    for (size_t mark = positions.size(); mark-- > 0;)
        if (levels[mark] != MarkerThinning::never)
            drawn.push_back(mark);
    m_origin = drawn.empty() ? QPointF() : positions[drawn.back()];
    QSGGeometry *geometry = m_quads->geometry();
    geometry->allocate(int(drawn.size()) * 4, int(drawn.size()) * 6);
    auto *vertex = static_cast<Vertex *>(geometry->vertexData());
    quint32 *corner = geometry->indexDataAsUInt();
    quint32 first = 0;
    for (const size_t mark : drawn) {
        const QPointF place = positions[mark] - m_origin;
        const auto column = quint8(cells[mark] % MarkerAtlas::columns);
        const auto row = quint8(cells[mark] / MarkerAtlas::columns);
        for (quint8 i = 0; i < 4; ++i)
            *vertex++ = {float(place.x()), float(place.y()), float(mark), column, row, i, levels[mark]};
        for (const quint32 i : {0U, 1U, 2U, 2U, 1U, 3U})
            *corner++ = first + i;
        first += 4;
    }
    geometry->markVertexDataDirty();
    geometry->markIndexDataDirty();
    m_quads->markDirty(DirtyGeometry);
    return qint64(geometry->vertexCount()) * geometry->sizeOfVertex()
        + qint64(geometry->indexCount()) * geometry->sizeOfIndex();
}

void MarkerNode::setHidden(const std::vector<qsizetype> &numbers)
{
    m_parameters.hidden.fill(-1);
    for (size_t i = 0; i < std::min(numbers.size(), m_parameters.hidden.size()); ++i)
        m_parameters.hidden[i] = float(numbers[i]);
}

void MarkerNode::setCamera(const MapCamera &camera)
{
    m_parameters.level = float(MarkerThinning::levelOf(camera.scale()));
    const QPointF offset = camera.toScreen(m_origin);
    QMatrix4x4 matrix;
    matrix.translate(float(offset.x()), float(offset.y()));
    matrix.scale(float(camera.scale()), float(camera.scale()));
    setMatrix(matrix);
    markDirty(DirtyMatrix);
}
