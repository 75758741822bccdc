#pragma once

#include <QHash>
#include <QPixmap>
#include <QStringList>

#include <string>

namespace veltrano {

class TopLevelItem;

/// The folders that have icons of their own, absolute paths, bytes; empty for none.
struct FolderPlaces {
    std::string home{};
    std::string downloads{};
    std::string pictures{};
    std::string applications{};

    /// Those of the user who runs the program.
    static FolderPlaces ofThisUser();
};

/// The icons of sidebar entries: those of the desktop's theme, or else our own. Owned by the sidebar's
/// controller; main thread. Looks at the entry only, never at the disk.
class EntryIcons {
public:
    explicit EntryIcons(FolderPlaces places);

    /// The icon of the entry in a square of so many points.
    QPixmap iconForFile(const TopLevelItem& entry, int side, qreal devicePixelRatio) const;

    /// The name of our own image for the entry.
    QString imageNameFor(const TopLevelItem& entry) const;

private:
    const FolderPlaces m_places;
    mutable QHash<QString, QPixmap> m_kept; // by image, size and ratio
};

} // namespace veltrano
