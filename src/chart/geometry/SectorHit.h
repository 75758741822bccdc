#pragma once

#include "chart/geometry/RingLayout.h"
#include "tree/VolumeFolderProtocol.h"

namespace veltrano {

/// The two things that a volume without a scan shows instead of items; told by their address.
struct SectorSentinels {
    TreeObject* m_pOccupSector;
    TreeObject* m_pFreeSector;
};

// From a point back to what is drawn there, by the walk that draws. Results that are not asked for may be
// null; a result place is written only when the value is known, and both stay untouched outside of the
// circle. Null where nothing is drawn. The caller holds the tree's lock.

/// `withResSubLevel` takes the ring also where that ring shows nothing. The root may be null.
TreeObject* getItemByPoint(const RingLayout& layout, VolumeFolderProtocol* root,
                           const SectorSentinels& sentinels, const QPointF& point, int* withResSubLevel,
                           double* withResSkAngle);

/// The same for a volume that was not scanned. The free part starts where the pointer is.
TreeObject* getItemByPointInNotScannedVolume(const RingLayout& layout, VolumeFolderProtocol& root,
                                             const SectorSentinels& sentinels, const QPointF& point,
                                             int* withResSubLevel, double* withResSkAngle);

/// What lies at a fraction of the turn on a ring, 0 to m_nSubLevels.
TreeObject* getItemBySublevel(const RingLayout& layout, VolumeFolderProtocol& root, int withSublevel,
                              double withkAngle, double* withResSkAngle);

/// The occupied share of a volume that was not scanned, fraction of a turn; 0 where its size is not known.
double getOccupiedRatio(const VolumeFolderProtocol& root);

} // namespace veltrano
