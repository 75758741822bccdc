#include "chart/geometry/RingCount.h"

#include "tree/FolderSystemItem.h"
#include "tree/TreeStorage.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace veltrano {

namespace {

/// Ring counts for which something holds: bit n for a count of n.
using RingCounts = std::uint32_t;

constexpr RingCounts countsFrom(int first) {
    return ~RingCounts{0} << first;
}

/// Looks at a tree once for all ring counts at the same time, instead of once for each: every item carries
/// the set of counts under which it and all above it are drawn.
class RingCountSearch {
public:
    explicit RingCountSearch(const RingLayout& layout) : m_layout(layout) {
        for (int rings = 1; rings <= kMaxSubLevels; ++rings) {
            m_layout.m_nSubLevels = rings;
            for (int ring = 1; ring <= rings; ++ring) {
                circumference(rings, ring) = m_layout.getCircumference(ring);
                double& longest = m_longest[static_cast<std::size_t>(ring)];
                longest = std::max(longest, circumference(rings, ring));
            }
        }
        for (std::size_t ring = 1; ring < m_longest.size(); ++ring)
            m_surelyTooSmall[ring] = sizeSurelyTooSmall(m_longest[ring]);
    }

    /// The largest ring count whose outermost ring shows something; 0 if there is none.
    int search(const VolumeFolderProtocol& root) {
        searchChildren(root.childrenArray(), 1, countsFrom(1) & ~countsFrom(kMaxSubLevels + 1));
        return m_nBest;
    }

private:
    /// A size, bytes, below which no item is drawn on a ring so long. A little below the limit itself, so
    /// that rounding decides nothing here: what is not below it is looked at exactly.
    std::int64_t sizeSurelyTooSmall(double circumferenceOfRing) const {
        constexpr double kMargin = 0.999;
        const double limit = kMinSectorArc / circumferenceOfRing * static_cast<double>(m_layout.m_lTotalSize);
        return circumferenceOfRing > 0 && limit < 1e18 ? static_cast<std::int64_t>(limit * kMargin) : 0;
    }

    double& circumference(int rings, int ring) {
        return m_circumferences[static_cast<std::size_t>(rings)][static_cast<std::size_t>(ring)];
    }

    void searchChildren(const ChildArray* children, int ring, RingCounts drawnFolder) {
        if (!children)
            return;
        for (const FileSystemItem* child : *children) {
            // Only counts above the best matter, and only those that have this ring.
            const RingCounts wanted = drawnFolder & countsFrom(std::max(ring, m_nBest + 1));
            if (wanted == 0)
                return;
            const RingCounts drawn = countsThatDraw(*child, ring, wanted);
            if (drawn == 0)
                continue;
            if (drawn & (RingCounts{1} << ring))
                m_nBest = ring;
            if (ring < kMaxSubLevels && child->isDir() && !child->isPack()) {
                if (const FolderSystemItem* folder = const_cast<FileSystemItem*>(child)->asFolderSystemItem())
                    searchChildren(folder->childrenArray(), ring + 1, drawn);
            }
        }
    }

    RingCounts countsThatDraw(const FileSystemItem& child, int ring, RingCounts wanted) {
        // Nearly all of a crowded folder is too small under any count, and one look tells.
        const std::int64_t size = child.gettotalsize();
        if (size < m_surelyTooSmall[static_cast<std::size_t>(ring)] && child.getParent())
            return 0;
        const double fraction = m_layout.getFraction(size);
        if (!CanDrawItem(child, fraction, m_longest[static_cast<std::size_t>(ring)]))
            return 0;
        RingCounts drawn = 0;
        for (RingCounts left = wanted; left != 0; left &= left - 1) {
            const int rings = std::countr_zero(left);
            if (CanDrawItem(child, fraction, circumference(rings, ring)))
                drawn |= RingCounts{1} << rings;
        }
        return drawn;
    }

    RingLayout m_layout;
    int m_nBest = 0;
    std::array<std::array<double, kMaxSubLevels + 1>, kMaxSubLevels + 1> m_circumferences{}; // points
    std::array<double, kMaxSubLevels + 1> m_longest{};              // of each ring under any count, points
    std::array<std::int64_t, kMaxSubLevels + 1> m_surelyTooSmall{}; // on each ring, bytes
};

} // namespace

int getMaxVisibleSublevelByMaxSizes(const RingLayout& layout,
                                    const std::array<std::int64_t, kLevelCount>& sizes) {
    int ring = layout.m_nSubLevels;
    while (ring >= 1 && !isArcVisible(layout.getFraction(sizes[static_cast<std::size_t>(ring)]),
                                      layout.getCircumference(ring)))
        --ring;
    return ring;
}

int countRingsByMaxSizes(RingLayout layout, const std::array<std::int64_t, kLevelCount>& sizes) {
    layout.m_nSubLevels = kMaxSubLevels;
    while (layout.m_nSubLevels > 0 && sizes[static_cast<std::size_t>(layout.m_nSubLevels)] <= 0)
        --layout.m_nSubLevels;
    while (getMaxVisibleSublevelByMaxSizes(layout, sizes) < layout.m_nSubLevels)
        --layout.m_nSubLevels;
    return layout.m_nSubLevels;
}

int countRingsByWalk(const RingLayout& layout, const VolumeFolderProtocol& root) {
    return RingCountSearch(layout).search(root);
}

} // namespace veltrano
