#include "chart/geometry/SectorWalk.h"

namespace veltrano {

std::int64_t getPrevSizesOfItem(const FileSystemItem& item, VolumeFolderProtocol* withTopParent) {
    const TreeObject* const top = withTopParent ? withTopParent->getObject() : nullptr;
    std::int64_t sum = 0;
    const FileSystemItem* current = &item;
    while (!current->isVol() && current != top && current->getParent()) {
        const FolderSystemItem* const parent = current->getParent();
        if (const ChildArray* siblings = parent->childrenArray()) {
            for (const FileSystemItem* sibling : *siblings) {
                if (sibling == current)
                    break;
                sum += sibling->gettotalsize();
            }
        }
        current = parent;
    }
    return sum;
}

} // namespace veltrano
