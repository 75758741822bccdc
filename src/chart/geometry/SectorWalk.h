#pragma once

#include "chart/geometry/RingLayout.h"
#include "tree/FolderSystemItem.h"
#include "tree/TreeStorage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace veltrano {

/// One sector as the walk meets it.
struct Sector {
    FileSystemItem& item;
    int nSubLevel;      ///< The ring, from 1.
    double dSkAngle;    ///< Where it starts, fraction of a turn.
    double dDeltaAngle; ///< How far it reaches, fraction of a turn.
};

/// A visitor's answer to a sector.
enum class SectorVisit {
    Descend, ///< Go on with what lies on the next ring above it, then with its next sibling.
    Skip,    ///< Go on with its next sibling.
    Stop,    ///< The walk is over.
};

/// How many children are asked for their sizes before the arithmetic, which then runs without calls: a tenth
/// faster in a folder of very many.
inline constexpr std::ptrdiff_t kSizesAtOnce = 32;

/// The children of one folder, from a ring and a fraction on; answers whether the walk may go on. The layout
/// is a RingLayout, or what answers for its ring count, circumferences and fractions.
template <class Layout, class Visitor>
bool walkSectors(const ChildArray* children, const Layout& layout, int ring, double start, Visitor& visit) {
    if (!children || ring < 1 || ring > layout.m_nSubLevels)
        return true;
    const double circumference = layout.getCircumference(ring);
    double angle = start;
    std::array<std::int64_t, kSizesAtOnce> sizes;
    FileSystemItem* const* const end = children->end();
    for (FileSystemItem* const* block = children->begin(); block < end; block += kSizesAtOnce) {
        const std::ptrdiff_t count = std::min<std::ptrdiff_t>(kSizesAtOnce, end - block);
        for (std::ptrdiff_t index = 0; index < count; ++index)
            sizes[static_cast<std::size_t>(index)] = block[index]->gettotalsize();
        for (std::ptrdiff_t index = 0; index < count; ++index) {
            FileSystemItem* const child = block[index];
            const double skAngle = angle;
            const double delta = layout.getFraction(sizes[static_cast<std::size_t>(index)]);
            // An item that is too small is passed over with its subtree, but its angle is still taken.
            angle += delta;
            if (!CanDrawItem(*child, delta, circumference))
                continue;
            const SectorVisit answer = visit(Sector{*child, ring, skAngle, delta});
            if (answer == SectorVisit::Stop)
                return false;
            if (answer != SectorVisit::Descend || !child->isDir() || child->isPack())
                continue;
            if (const FolderSystemItem* folder = child->asFolderSystemItem();
                folder && !walkSectors(folder->childrenArray(), layout, ring + 1, skAngle, visit))
                return false;
        }
    }
    return true;
}

/// The one walk of the chart: every sector that is drawn for `root`, in the order of drawing, each folder
/// before what it holds. Whoever paints, hits, counts or marks sectors asks here, so that what is not drawn
/// is not hit. The total must be positive; the caller holds the tree's lock.
template <class Visitor>
void forEachSector(const VolumeFolderProtocol& root, const RingLayout& layout, Visitor visit) {
    walkSectors(root.childrenArray(), layout, 1, 0.0, visit);
}

/// The bytes that stand before an item on the circle of `withTopParent`: of its earlier siblings and of those
/// of every folder above, up to the top parent, or to the tree's root with none. Under the tree's lock.
std::int64_t getPrevSizesOfItem(const FileSystemItem& item, VolumeFolderProtocol* withTopParent);

} // namespace veltrano
