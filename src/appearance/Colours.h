#pragma once

#include <QColor>

#include <array>
#include <cstdint>

namespace veltrano {

/// The colours that chart, tables and labels share, each offered by a getter of its name. Main thread.
class Colours {
public:
    /// The one set, made on first use.
    static Colours& sharedColours();

    QColor cTrashColor() const { return m_cTrashColor; }         ///< Sectors of items in the Trash.
    QColor cHiddenColor() const { return m_cHiddenColor; }       ///< Hidden, unscanned and protected sectors.
    QColor cOccupiedColor() const { return m_cOccupiedColor; }   ///< Occupied part of an unscanned volume.
    QColor cFreeColor() const { return m_cFreeColor; }           ///< Free part.
    QColor cCollectedColor() const { return m_cCollectedColor; } ///< Collected items.
    QColor cEndRootColor() const { return m_cEndRootColor; }     ///< Middle of the top root's gradient.
    QColor cLineColor() const { return m_cLineColor; }           ///< Sector outlines.
    QColor secTextColor() const { return m_secTextColor; }       ///< Table text of collected items.
    QColor secTextColor2() const { return m_secTextColor2; }     ///< Table text of hidden or trashed items.

    /// The colour of an age class, 0 to 7; anything else counts as 0, the unknown age.
    QColor getColorByTimeCode(std::uint8_t timeCode) const;

    /// Whether groups of the sidebar are drawn as plain texts. They never are: there is one way of drawing.
    bool oldDraw() const { return false; }

    // What a table cell is about to draw: it sets these just before and clears them after.
    bool isSelectedCellDrawing() const { return m_bSelectedCellDrawing; }
    void setSelectedCellDrawing(bool drawing) { m_bSelectedCellDrawing = drawing; }
    bool isCollectedItemDrawing() const { return m_bCollectedItemDrawing; }
    void setCollectedItemDrawing(bool drawing) { m_bCollectedItemDrawing = drawing; }
    bool isHiddOrTrashedDrawing() const { return m_bHiddOrTrashedDrawing; }
    void setHiddOrTrashedDrawing(bool drawing) { m_bHiddOrTrashedDrawing = drawing; }

    // The text colours of that cell.
    QColor getPrimaryTableTextColor() const;
    QColor getSecondaryTableTextColor() const;

private:
    Colours() { initColors(); }
    void initColors();

    QColor m_cTrashColor;
    QColor m_cHiddenColor;
    QColor m_cOccupiedColor;
    QColor m_cFreeColor;
    QColor m_cCollectedColor;
    QColor m_cEndRootColor;
    QColor m_cLineColor;
    QColor m_secTextColor;
    QColor m_secTextColor2;
    /// By time code. Neighbours share a colour, so that eight age classes give five tones.
    std::array<QColor, 8> m_aSectorColors;

    bool m_bSelectedCellDrawing = false;
    bool m_bCollectedItemDrawing = false;
    bool m_bHiddOrTrashedDrawing = false;
};

} // namespace veltrano
