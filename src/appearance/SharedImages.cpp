#include "appearance/SharedImages.h"

#include "appearance/Images.h"

#include <algorithm>

namespace veltrano {

namespace {

/// One row for each image: accessor, drawing.
constexpr SharedImage kSharedImages[] = {
    {"mimgTitleRowLight", "light-for-folders-etc"},
    {"mimgRowGradSel2", "slr"},
    {"mimgProgressKnobSlot", "scroll_knob_slot"},
    {"mimgTableSelectionBig", "table_selection_big"},
    {"mimgScannedItemMark", "scanedMark"},
    {"mimgUnScannedItemMark", "unscanedMark"},
    {"mimgDropTitle", "DropTitle"},
    {"mimgRowHilite", "active03"},
    {"mimgRowHilite2", "active05"},
    {"mimgRowSelect", "active01"},
    {"mimgdropBox", "dropbox-all"},
    {"mimgRowHiliteB", "active04"},
    {"mimgRowHiliteB2", "active06"},
    {"mimgRowSelectB", "selectionback2"},
    {"mimgRowSelectB2", "active20"},
    {"mimgCiGlow", "pulse"},
    {"mimgBottomPanel", "panelBG"},
    {"mimgBottomPanelBot", "panelBGbot"},
    {"pvtSelLeft", "tablesel-mid-lcorner"},
    {"pvtSelCent", "tablesel-mid-sel"},
    {"pvtSelRight", "tablesel-mid-rcorner"},
    {"pvtSelLeftBig", "tablesel-big-lcorner"},
    {"pvtSelCentBig", "tablesel-big-sel"},
    {"pvtSelRightBig", "tablesel-big-rcorner"},
    {"pvtSelectionBig", "selection_left_big"},
    {"pvtSelectionSmall", "selection_left_small"},
    {"pvttitleDisks", "harddisks"},
    {"pvttitleDisksExt", "externaldisks"},
    {"pvttitleDisksImg", "diskimages"},
    {"pvttitleDisksNet", "networkdisks"},
    {"pvttitleDisksOpt", "opticaldisks"},
    {"pvttitleFolders", "folderstit"},
    {"pvttitleFavoriteFolders", "favoritefolderstit"},
    {"pvttitleRecentFolders", "recentfolderstit"},
    {"ptitleInformation", "information"},
    {"ptitleBiggestFiles", "biggestfiles"},
    {"ptitleDropHere", "dropfiles"},
    {"p25tSelLeft", "table25-sel-lcorner"},
    {"p25tSelCent", "table25-sel-cent"},
    {"p25tSelRight", "table25-sel-rcorner"},
    {"p25tHiLeft", "table25-hi-lcorner"},
    {"p25tHiCent", "table25-hi-cent"},
    {"p25tHiRight", "table25-hi-rcorner"},
    {"pvtSepLeft", "lf-sep-left"},
    {"pvtSepCent", "lf-sep-cent"},
    {"pvtSepRight", "lf-sep-right"},
    {"pathLeftImg", "path_left"},
    {"pathRightImg", "path_right"},
    {"pathMidImg", "path_mid"},
    {"pathArowImg", "path_arrow"},
    {"pbgDisk", "diskbackground"},
};

} // namespace

std::span<const SharedImage> sharedImages() {
    return kSharedImages;
}

QPixmap sharedImage(std::string_view accessor, qreal devicePixelRatio) {
    const auto* const found = std::ranges::find(kSharedImages, accessor, &SharedImage::accessor);
    if (found == std::end(kSharedImages))
        return {};
    return image(QString::fromLatin1(found->resource.data(), static_cast<qsizetype>(found->resource.size())),
                 devicePixelRatio);
}

} // namespace veltrano
