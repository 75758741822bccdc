#pragma once

#include "tree/FileSystemItem.h"
#include "tree/VolumeFolderProtocol.h"

#include <QColor>

#include <cstdint>

namespace veltrano {

// What a sector is painted with, from flags and age alone: the colour says what an item is, and for an
// ordinary one how long ago it changed, never where it lies. Pure functions.

/// The colour flags of sectors; any other value is painted as kSectorPlain.
enum SectorColorFlag : std::int16_t {
    kSectorPlain = 0,
    kSectorHidden = 1,
    kSectorFileVault = 2,
    kSectorCollected = 3,
    kSectorUnscanned = 4,
    kSectorOccupied = 5,
    kSectorFree = 6,
    kSectorTrash = 7,
};

/// What the children of a folder take over from it.
struct InheritedFlags {
    bool bCollected = false;
    bool bHidden = false;
    bool bTrash = false;
};

struct ChildFlags {
    InheritedFlags passedOn; ///< What the child's own children inherit.
    std::int16_t colorFlag;
};

/// The Trash beats everything, and hidden beats collected.
ChildFlags getChildFlags(const FileSystemItem& child, const InheritedFlags& inherited);

/// The colour of a sector. While its root is scanned, plain sectors are pale.
QColor getSectorFill(std::int16_t colorFlag, std::uint8_t timeCode, float alpha, bool scanning);
/// The colour of its line; while scanning a light grey, whatever the alpha.
QColor getSectorLine(float alpha, bool scanning);

struct DiscFill {
    QColor colour;
    bool bGradient; ///< Shaded from a light middle: the plain disc of a top root.
};

/// The colour of the central disc, with no alpha applied.
DiscFill getDiscFill(const VolumeFolderProtocol& root);

} // namespace veltrano
