#include "chart/SectorColours.h"

#include "appearance/Colours.h"

namespace veltrano {

namespace {

/// What plain sectors keep of their alpha while their root is scanned.
constexpr double kScanDimming = 0.35;

/// The lines of a chart under scan, in all three channels.
constexpr float kScanLineGrey = 180.0f / 255.0f;

QColor withAlpha(QColor colour, float alpha) {
    colour.setAlphaF(alpha);
    return colour;
}

std::int16_t getColorFlag(const FileSystemItem& child, const InheritedFlags& passedOn) {
    if (passedOn.bTrash)
        return kSectorTrash;
    if (child.isHidden() || passedOn.bHidden)
        return kSectorHidden;
    if (child.isUnscanned())
        return kSectorUnscanned;
    if (child.isFileVaultDir())
        return kSectorFileVault;
    return passedOn.bCollected ? kSectorCollected : kSectorPlain;
}

} // namespace

ChildFlags getChildFlags(const FileSystemItem& child, const InheritedFlags& inherited) {
    const InheritedFlags passedOn{.bCollected = inherited.bCollected || child.isCollected(),
                                  .bHidden = inherited.bHidden || child.isHiddenFlag(),
                                  .bTrash = inherited.bTrash || child.isTrashFlag()};
    return {passedOn, getColorFlag(child, passedOn)};
}

QColor getSectorFill(std::int16_t colorFlag, std::uint8_t timeCode, float alpha, bool scanning) {
    const Colours& colours = Colours::sharedColours();
    switch (colorFlag) {
    case kSectorHidden:
    case kSectorFileVault:
    case kSectorUnscanned:
        return withAlpha(colours.cHiddenColor(), alpha);
    case kSectorCollected:
        return withAlpha(colours.cCollectedColor(), alpha);
    case kSectorOccupied:
        return withAlpha(colours.cOccupiedColor(), alpha);
    case kSectorFree:
        return withAlpha(colours.cFreeColor(), alpha);
    case kSectorTrash:
        return withAlpha(colours.cTrashColor(), alpha);
    default:
        return withAlpha(colours.getColorByTimeCode(timeCode),
                         scanning ? static_cast<float>(static_cast<double>(alpha) * kScanDimming) : alpha);
    }
}

QColor getSectorLine(float alpha, bool scanning) {
    if (scanning)
        return QColor::fromRgbF(kScanLineGrey, kScanLineGrey, kScanLineGrey);
    return withAlpha(Colours::sharedColours().cLineColor(), alpha);
}

DiscFill getDiscFill(const VolumeFolderProtocol& root) {
    const Colours& colours = Colours::sharedColours();
    if (root.isTopCollected())
        return {colours.cCollectedColor(), false};
    if (root.isTopTrashFlag())
        return {colours.cTrashColor(), false};
    if (root.isTopHiddenFlag())
        return {colours.cHiddenColor(), false};
    return {colours.getColorByTimeCode(root.getTimeCode()), root.getParent() == nullptr};
}

} // namespace veltrano
