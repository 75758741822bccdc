#pragma once

#include "tree/FileSystemItem.h"

#include <memory>

namespace veltrano {

/// One drawn sector, by name: what it stands for, its ring and its start. Keeps the whole tree of a tree
/// item, so that a pointed or selected item stays good whatever becomes of its scan; entries and sentinels
/// are not kept. Main thread.
class SectorItem {
public:
    /// An item, an entry, a sentinel, or null for none.
    TreeObject* m_pItem() const { return m_pObject; }
    void setM_pItem(TreeObject* item) {
        FileSystemItem* const node = item ? item->asFileSystemItem() : nullptr;
        m_pTree = node ? TreeStorage::of(node).shared_from_this() : nullptr;
        m_pObject = item;
    }

    int m_nSubLevel() const { return m_nRing; } ///< 0 for the central disc.
    void setM_nSubLevel(int ring) { m_nRing = ring; }
    double m_dSkAngle() const { return m_dStart; } ///< Fraction of a turn.
    void setM_dSkAngle(double start) { m_dStart = start; }

    void set(TreeObject* item, int ring, double start) {
        setM_pItem(item);
        m_nRing = ring;
        m_dStart = start;
    }
    void cleanSector() { *this = SectorItem(); }

private:
    std::shared_ptr<TreeStorage> m_pTree;
    TreeObject* m_pObject = nullptr;
    int m_nRing = 0;
    double m_dStart = 0.0;
};

} // namespace veltrano
