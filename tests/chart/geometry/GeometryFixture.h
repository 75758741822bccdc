#pragma once

#include "chart/geometry/SectorWalk.h"
#include "support/TreeBuilder.h"

#include <cmath>
#include <vector>

namespace veltrano::test {

/// A layout as a view of these measures would have it.
inline RingLayout layoutFor(double width, double height, int rings, std::int64_t total) {
    RingLayout layout;
    layout.setBounds(QRectF(0, 0, width, height));
    layout.m_nSubLevels = rings;
    layout.m_lTotalSize = total;
    return layout;
}

inline void setOrigin(RingLayout& layout, double radians) {
    layout.g_dOriginAngleRad = radians;
    layout.g_dOriginAngleDeg = radians * 180.0 / std::numbers::pi;
}

/// The point at a fraction of the turn and a distance from the centre.
inline QPointF pointAt(const RingLayout& layout, double angleK, double radius) {
    const double angle = layout.g_dOriginAngleRad - 2 * std::numbers::pi * angleK;
    return layout.m_Center + radius * QPointF(std::cos(angle), std::sin(angle));
}

/// The middle of a sector.
inline QPointF middleOf(const RingLayout& layout, int ring, double start, double delta) {
    return pointAt(layout, start + delta / 2, (layout.getRadius(ring - 1) + layout.getRadius(ring)) / 2);
}

inline std::vector<Sector> sectorsOf(const VolumeFolderProtocol& root, const RingLayout& layout) {
    std::vector<Sector> sectors;
    forEachSector(root, layout, [&](const Sector& sector) {
        sectors.push_back(sector);
        return SectorVisit::Descend;
    });
    return sectors;
}

inline std::vector<std::string> namesOf(const std::vector<Sector>& sectors) {
    std::vector<std::string> names;
    for (const Sector& sector : sectors)
        names.emplace_back(sector.item.relativePath());
    return names;
}

} // namespace veltrano::test
