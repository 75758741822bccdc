#pragma once

#include "platform/FileCatalogue.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace veltrano {

class FolderSystemItem;

/// A folder that is still to be read. A value; the items belong to the tree.
struct stackitem2 {
    CatalogueRef ref;
    /// The item of the folder, once it has one; a folder inside a package has the package. While `bNew` holds
    /// it is the item of the folder above: nobody knows yet whether there is anything in this one, and an
    /// empty folder gets no item.
    FolderSystemItem* item = nullptr;
    bool bNew = false;
    bool bPack = false;   ///< A package, or a folder inside one.
    bool bInPack = false; ///< A folder inside a package: it never gets an item of its own.
    // What the item will be made from.
    bool bHidden = false;
    std::uint8_t timeCode = 0;
};

/// The folders that one worker has found and kept. A stack, not recursion, so that a deep tree does not
/// exhaust the thread's own. Its worker's thread only.
class stack2 {
public:
    bool isEmpty() const { return m_items.empty(); }
    void push(stackitem2&& item) { m_items.push_back(std::move(item)); }
    /// The record pushed last; false if there is none.
    bool pop(stackitem2& item) {
        if (m_items.empty())
            return false;
        item = std::move(m_items.back());
        m_items.pop_back();
        return true;
    }

private:
    std::vector<stackitem2> m_items;
};

} // namespace veltrano
