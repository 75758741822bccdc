#include "chart/RadialController.h"

#include "chart/geometry/SectorHit.h"

#include <QPainter>

namespace veltrano {

namespace {

constexpr double kFocusLineWidth = 1.5;    // points
constexpr double kSelectedLineWidth = 3.0; // points

/// m_pFocusShadow: a white shadow that blurs the outline's edge this far to each side, points.
constexpr double kShadowBlur = 0.5;
constexpr float kShadowAlpha = 0.4f;

void strokeOutline(QPainter& painter, const SectorPath& outline) {
    painter.setBrush(Qt::NoBrush);
    const auto stroke = [&](const QColor& colour, double width) {
        painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
        painter.drawPath(outline.path);
    };
    stroke(QColor::fromRgbF(1, 1, 1, kShadowAlpha), outline.dLineWidth + 2 * kShadowBlur);
    stroke(Qt::white, outline.dLineWidth);
}

QRectF boundsOfStroke(const SectorPath& outline) {
    const double reach = outline.dLineWidth / 2 + kShadowBlur;
    return outline.path.boundingRect().adjusted(-reach, -reach, reach, reach);
}

} // namespace

std::optional<SectorPath> RadialController::getFocusOutline() const {
    TreeObject* const item = m_pCurPointedSector.m_pItem();
    if (!item || !m_pRoot)
        return std::nullopt;
    SectorPath outline;
    if (item == m_sentinels.m_pOccupSector || item == m_sentinels.m_pFreeSector) {
        const double ratio = getOccupiedRatio(*m_pRoot);
        const bool occupied = item == m_sentinels.m_pOccupSector;
        FillSectorPath(m_layout, outline, 1, occupied ? 0.0 : ratio, occupied ? ratio : 1.0 - ratio,
                       kFocusLineWidth);
        return outline;
    }
    const FileSystemItem* const node = item->asFileSystemItem();
    const int ring = m_pCurPointedSector.m_nSubLevel();
    const bool wholeTurn = ring == 0 || !node;
    if (ring > m_layout.m_nSubLevels || (!wholeTurn && m_layout.m_lTotalSize <= 0) ||
        !CanDrawItem(item, ring))
        return std::nullopt;
    FillSectorPath(m_layout, outline, ring, m_pCurPointedSector.m_dSkAngle(),
                   wholeTurn ? 1.0 : m_layout.getFraction(node->gettotalsize()), kFocusLineWidth);
    return outline;
}

std::vector<SectorPath> RadialController::getSelectedOutlines() const {
    std::vector<SectorPath> outlines;
    if (m_layout.m_lTotalSize <= 0)
        return outlines;
    for (const SectorItem& sector : m_pSelectedSectors) {
        const FileSystemItem* const node = sector.m_pItem() ? sector.m_pItem()->asFileSystemItem() : nullptr;
        if (!node || sector.m_nSubLevel() > m_layout.m_nSubLevels ||
            !CanDrawItem(sector.m_pItem(), sector.m_nSubLevel()))
            continue;
        FillSectorPath(m_layout, outlines.emplace_back(), sector.m_nSubLevel(), sector.m_dSkAngle(),
                       m_layout.getFraction(node->gettotalsize()), kSelectedLineWidth);
    }
    return outlines;
}

bool RadialController::DrawFocusItem(QPainter& painter) const {
    const std::optional<SectorPath> outline = getFocusOutline();
    if (!outline)
        return false;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    strokeOutline(painter, *outline);
    painter.restore();
    return true;
}

bool RadialController::DrawSelectedItem(QPainter& painter) const {
    const std::vector<SectorPath> outlines = getSelectedOutlines();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SectorPath& outline : outlines)
        strokeOutline(painter, outline);
    painter.restore();
    return !outlines.empty();
}

QRectF RadialController::getOutlinesBounds() const {
    QRectF bounds;
    if (const std::optional<SectorPath> focus = getFocusOutline())
        bounds = boundsOfStroke(*focus);
    for (const SectorPath& outline : getSelectedOutlines())
        bounds = bounds.united(boundsOfStroke(outline));
    return bounds;
}

} // namespace veltrano
