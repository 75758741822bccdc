#include "chart/geometry/SectorHit.h"

#include "chart/geometry/SectorWalk.h"

#include <cmath>

namespace veltrano {

namespace {

template <class Value>
void store(Value* place, Value value) {
    if (place)
        *place = value;
}

double distanceFromCentre(const RingLayout& layout, const QPointF& point) {
    return std::hypot(point.x() - layout.m_Center.x(), point.y() - layout.m_Center.y());
}

/// The fraction of the turn at which a point lies, 0 to 1; 1 itself may come out.
double angleOfPoint(const RingLayout& layout, const QPointF& point) {
    const double angle = std::atan2(point.y() - layout.m_Center.y(), point.x() - layout.m_Center.x());
    double k = (layout.g_dOriginAngleRad - angle) * 0.5 / std::numbers::pi;
    while (k < 0.0)
        k += 1.0;
    while (k > 1.0)
        k -= 1.0;
    return k;
}

/// The innermost ring whose outer edge is at or beyond a distance in radii; -1 beyond the outermost.
int ringAtDistance(const RingLayout& layout, double distance) {
    for (int ring = 0; ring <= layout.m_nSubLevels; ++ring) {
        if (static_cast<double>(layout.getRingBound(ring)) >= distance)
            return ring;
    }
    return -1;
}

} // namespace

TreeObject* getItemByPoint(const RingLayout& layout, VolumeFolderProtocol* root,
                           const SectorSentinels& sentinels, const QPointF& point, int* withResSubLevel,
                           double* withResSkAngle) {
    if (!root)
        return nullptr;
    if (root->isNotScannedVolume()) {
        return getItemByPointInNotScannedVolume(layout, *root, sentinels, point, withResSubLevel,
                                                withResSkAngle);
    }
    const int ring =
        ringAtDistance(layout, distanceFromCentre(layout, point) / static_cast<double>(layout.m_fullRadius));
    if (ring < 0)
        return nullptr;
    store(withResSubLevel, ring);
    return getItemBySublevel(layout, *root, ring, angleOfPoint(layout, point), withResSkAngle);
}

TreeObject* getItemByPointInNotScannedVolume(const RingLayout& layout, VolumeFolderProtocol& root,
                                             const SectorSentinels& sentinels, const QPointF& point,
                                             int* withResSubLevel, double* withResSkAngle) {
    const double distance = distanceFromCentre(layout, point);
    if (distance > static_cast<double>(layout.m_fullRadius))
        return nullptr;
    if (distance / static_cast<double>(layout.m_fullRadius) <= static_cast<double>(layout.getRingBound(0))) {
        store(withResSubLevel, 0);
        store(withResSkAngle, 0.0);
        return root.getObject();
    }
    store(withResSubLevel, 1);
    const double k = angleOfPoint(layout, point);
    const bool free = k > getOccupiedRatio(root);
    store(withResSkAngle, free ? k : 0.0);
    return free ? sentinels.m_pFreeSector : sentinels.m_pOccupSector;
}

TreeObject* getItemBySublevel(const RingLayout& layout, VolumeFolderProtocol& root, int withSublevel,
                              double withkAngle, double* withResSkAngle) {
    if (withSublevel == 0) {
        store(withResSkAngle, 0.0);
        return root.getObject();
    }
    TreeObject* found = nullptr;
    forEachSector(root, layout, [&](const Sector& sector) {
        // Siblings stand in the order of their angles: past the wanted one there is nothing more to find.
        if (sector.dSkAngle > withkAngle)
            return SectorVisit::Stop;
        if (!(sector.dSkAngle + sector.dDeltaAngle > withkAngle))
            return SectorVisit::Skip;
        if (sector.nSubLevel != withSublevel)
            return SectorVisit::Descend;
        found = &sector.item;
        store(withResSkAngle, sector.dSkAngle);
        return SectorVisit::Stop;
    });
    return found;
}

double getOccupiedRatio(const VolumeFolderProtocol& root) {
    const std::int64_t whole = root.getWholeItemSize();
    return whole > 0 ? static_cast<double>(root.getOccSize()) / static_cast<double>(whole) : 0.0;
}

} // namespace veltrano
