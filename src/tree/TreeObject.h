#pragma once

namespace veltrano {

class FileSystemItem;
class TopLevelItem;

/// What a sector, a selection or a root may stand for: a tree item, a sidebar entry, or a sentinel that is
/// told by its address alone. Main thread. Ownership is told at the derived classes.
class TreeObject {
public:
    TreeObject(const TreeObject&) = delete;
    TreeObject& operator=(const TreeObject&) = delete;

    /// This object as a tree item; null for an entry or a sentinel.
    virtual FileSystemItem* asFileSystemItem() { return nullptr; }

    /// This object as a sidebar entry; null for all else.
    virtual TopLevelItem* asTopLevelItem() { return nullptr; }

protected:
    TreeObject() = default;
    ~TreeObject() = default;
};

} // namespace veltrano
