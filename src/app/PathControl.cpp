#include "app/PathControl.h"

#include "app/DisplayText.h"
#include "tree/FolderSystemItem.h"
#include "tree/PathComponents.h"
#include "tree/VolumeFolderProtocol.h"

#include <set>
#include <utility>

namespace veltrano {

namespace {

/// The paths of the folders of its tree that the item lies in.
std::set<std::string> foldersAbove(const VolumeFolderProtocol& item) {
    std::set<std::string> paths;
    for (const FolderSystemItem* folder = item.getParent(); folder; folder = folder->getParent())
        if (folder->isDir() && !folder->isPack())
            paths.insert(folder->getFullPath());
    return paths;
}

} // namespace

PathControl::PathControl(std::string homeFolder, QWidget* parent)
    : PathColntrolCell(parent), m_homeFolder(std::move(homeFolder)) {
    setAccessibleName(tr("Path"));
    hide();
}

void PathControl::setPathControlTextForItem(const VolumeFolderProtocol* item, const QString& rootTitle) {
    // A volume is named in the sidebar and in the disc: a path would say nothing more.
    const bool shown = item && !item->isVol();
    m_path = shown ? item->getFullPath() : std::string();
    const std::set<std::string> ways = shown ? foldersAbove(*item) : std::set<std::string>();
    std::vector<Component> components;
    std::string above;
    for (const std::string_view name : pathComponents(m_path)) {
        if (above.empty())
            above = name;
        else
            appendPathComponent(above, name);
        const bool isTop = above == "/";
        components.push_back({.title = isTop && !rootTitle.isEmpty() ? rootTitle : displayText(name),
                              .iconName = iconOfPath(above),
                              .path = above,
                              .isWay = ways.contains(above)});
    }
    setPathComponents(std::move(components));
    setAccessibleDescription(displayText(m_path));
    setVisible(shown);
}

QString PathControl::iconOfPath(const std::string& path) const {
    if (path == "/")
        return QStringLiteral("extra/volume-internal");
    if (path == m_homeFolder)
        return QStringLiteral("extra/folder-home");
    if (path == m_homeFolder + "/Downloads")
        return QStringLiteral("extra/folder-downloads");
    if (path == m_homeFolder + "/Pictures")
        return QStringLiteral("extra/folder-pictures");
    return QStringLiteral("extra/folder");
}

} // namespace veltrano
