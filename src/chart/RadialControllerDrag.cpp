// Files and their paths: what is copied, dragged and shown elsewhere.

#include "chart/ChartHost.h"
#include "chart/PathsMimeData.h"
#include "chart/RadialController.h"
#include "chart/RadialView.h"
#include "tree/SpecialItems.h"
#include "tree/TopLevelItem.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QStyle>

namespace veltrano {

namespace {

/// The rectangle that a drag seems to come from, points.
constexpr QSizeF kDragFrom{32, 2};
constexpr int kIconSide = 32; // points

const std::string kHiddenItemsAt = "Hidden items at ";

struct DragText {
    std::string text;
    bool isPath; // the text is the path of a real file
};

DragText getDragText(const FileSystemItem& item) {
    if (item.isHidden())
        return {kHiddenItemsAt + item.getFullPath(), false};
    if (item.isTopHiddenFlag())
        return {"Hidden item " + item.getFullPath(), false};
    if (item.isTopTrashFlag())
        return {"Trash item " + item.getFullPath(), false};
    if (item.isUnscanned())
        return {std::string(item.getDesc()), false};
    return {item.getFullPath(), true};
}

} // namespace

std::optional<std::string> RadialController::getFullPathForObject(TreeObject* object) const {
    if (!object)
        return std::nullopt;
    if (object == m_sentinels.m_pOccupSector || object == m_sentinels.m_pFreeSector)
        object = m_pRoot ? m_pRoot->getObject() : nullptr;
    if (FileSystemItem* const node = object ? object->asFileSystemItem() : nullptr) {
        if (node->isFileVaultDir())
            return std::string(static_cast<const FileVaultDirItem*>(node)->getVolumeLinkPath());
        if (!node->isHidden() && !node->isUnscanned())
            return node->getFullPath();
        if (const FolderSystemItem* const folder = node->getParent())
            return folder->getFullPath();
        return std::nullopt;
    }
    if (const TopLevelItem* const entry = object ? object->asTopLevelItem() : nullptr)
        return entry->getFullPath();
    return std::nullopt;
}

std::optional<RadialController::DragFile> RadialController::getDragFileByPoint(const QPointF& point) {
    if (!m_pRoot || isSelectedScanningRoot())
        return std::nullopt;
    TreeObject* const object = getItemByPoint(point, nullptr, nullptr);
    const FileSystemItem* const item = object ? object->asFileSystemItem() : nullptr;
    if (!item)
        return std::nullopt;
    DragText drag = getDragText(*item);
    return DragFile{.text = std::move(drag.text),
                    .isPath = drag.isPath,
                    .isRemovable = drag.isPath && object != m_pRoot->getObject(),
                    .isFolder = item->isDir() && !item->isPack()};
}

bool RadialController::getDragFileInfoByPoint(const QPointF& point, std::string* toFilePath,
                                              bool* isRemovable, QRectF* fromRect) {
    std::optional<DragFile> file = getDragFileByPoint(point);
    if (!file)
        return false;
    if (isRemovable)
        *isRemovable = file->isRemovable;
    if (fromRect)
        *fromRect = {QPointF(point.x() - kDragFrom.width() / 2, point.y() - kDragFrom.height() / 2),
                     kDragFrom};
    if (toFilePath)
        *toFilePath = std::move(file->text);
    return true;
}

bool RadialController::dragFromDiagramByPoint(const QPointF& /*point*/, const QMouseEvent& /*withEvent*/) {
    const std::optional<DragFile> file = std::exchange(m_pressedFile, std::nullopt);
    if (!file || !radialView || !m_pRoot || isSelectedScanningRoot())
        return false;
    auto pasteboard = std::make_unique<QMimeData>();
    const std::span<const std::string> paths(&file->text, 1);
    if (!writeFilePaths(paths, *pasteboard))
        return false;
    if (file->isPath)
        writeFileUris(paths, *pasteboard);

    // Before the drag, which turns the main loop: the chart may be gone when it ends.
    m_bWasDragging = true;
    radialView->setDragRemovable(file->isRemovable);
    auto* const drag = new QDrag(radialView);
    drag->setMimeData(pasteboard.release());
    const QIcon icon =
        QApplication::style()->standardIcon(file->isFolder ? QStyle::SP_DirIcon : QStyle::SP_FileIcon);
    drag->setPixmap(icon.pixmap(QSize(kIconSide, kIconSide), radialView->devicePixelRatioF()));
    drag->setHotSpot({kIconSide / 2, kIconSide / 2});
    drag->exec(radialView->getDragActions(), Qt::CopyAction);
    return true;
}

TreeObject* RadialController::getPointedOrSelected() const {
    if (TreeObject* const pointed = m_pCurPointedSector.m_pItem())
        return pointed;
    return m_pSelectedSectors.empty() ? nullptr : m_pSelectedSectors.front().m_pItem();
}

std::optional<std::string> RadialController::getTextToCopy() const {
    TreeObject* object = getPointedOrSelected();
    const bool isPart = object == m_sentinels.m_pOccupSector || object == m_sentinels.m_pFreeSector;
    if (!object || isPart)
        object = m_pRoot ? m_pRoot->getObject() : nullptr;
    if (!object)
        return std::nullopt;
    if (const TopLevelItem* const entry = object->asTopLevelItem())
        return entry->getFullPath();
    const FileSystemItem* const item = object->asFileSystemItem();
    if (!item)
        return std::nullopt;
    if (item->isHidden())
        return kHiddenItemsAt + item->getFullPath();
    return item->isUnscanned() ? std::string(item->getDesc()) : item->getFullPath();
}

void RadialController::openFileItemInFinder(TreeObject* item) {
    const auto path = getFullPathForObject(item ? item : getPointedOrSelected());
    if (path && m_pHost)
        m_pHost->showItems({*path});
}

void RadialController::openItemInfoInFinder(TreeObject* item) {
    const auto path = getFullPathForObject(item ? item : getPointedOrSelected());
    if (path && m_pHost)
        m_pHost->showItemProperties({*path});
}

} // namespace veltrano
