#pragma once

#include <QColor>

/// The colours of the interface, one name for each meaning. Every widget takes its colours from here; those
/// of the chart stand in Colours.h.
namespace veltrano::tokens {

inline constexpr QColor colour(QRgb rgb) {
    return QColor(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

/// A plate that falls from a lighter top to a darker foot, with its edge.
struct Plate {
    QColor top;
    QColor foot;
    QColor edge;
};

inline constexpr QColor kInk = colour(0x333333);      // text
inline constexpr QColor kInk2 = colour(0x49586A);     // captions, legend
inline constexpr QColor kInk3 = colour(0x5A6A7D);     // shortcuts in menus
inline constexpr QColor kHeading = colour(0x2C4065);  // titles
inline constexpr QColor kDisabled = colour(0x8795A6); // disabled text only
inline constexpr QColor kAccent = colour(0x32699C);   // links, glyphs
inline constexpr QColor kFocus = colour(0x5AA0DC);    // focus ring
inline constexpr QColor kStopText = colour(0x8F3448); // stop buttons
inline constexpr QColor kLine = colour(0xAFBBC8);     // control edges
inline constexpr QColor kLineSoft = colour(0xD3DCE6); // hairlines inside panels
inline constexpr QColor kHairline = colour(0xC9D4DF); // hairlines between regions
inline constexpr QColor kMenuBar = colour(0xF1F5FA);
inline constexpr QColor kMenuEdge = colour(0xC3CEDA);
inline constexpr QColor kWhite = colour(0xFFFFFF);

inline constexpr Plate kAccentPlate{colour(0x3A73A8), colour(0x2F6496), colour(0x28557F)};
inline constexpr Plate kAccentHover{colour(0x447FB6), colour(0x3870A4), colour(0x28557F)};
inline constexpr QColor kAccentPressed = colour(0x28557F);
inline constexpr Plate kButton{colour(0xFFFFFF), colour(0xF0F4F9), kLine};
inline constexpr Plate kButtonHover{colour(0xFFFFFF), colour(0xE6EEF6), colour(0x8FA6BE)};
inline constexpr QColor kButtonPressed = colour(0xDCE6F0);
inline constexpr QColor kButtonDisabled = colour(0xEDF2F7);
inline constexpr QColor kStopEdge = colour(0xD9B7BF); // edge of a white button with a stop text
inline constexpr Plate kCard{colour(0xFFFFFF), colour(0xFAFCFE), colour(0xCDD8E3)};
inline constexpr Plate kSidebar{colour(0xE9EFF6), colour(0xE3EAF2), kHairline};
inline constexpr Plate kTrack{colour(0xDCE5EE), colour(0xEEF3F8), colour(0xAFC2D6)};
inline constexpr Plate kTrackFill{colour(0x79B4E6), colour(0x4A8CC7), colour(0x3F7DB5)};
inline constexpr Plate kSheet{colour(0xF6F9FC), colour(0xE9EFF6), kHairline}; // ground of dialogs
inline constexpr Plate kHoverPlate{colour(0xE3EDF7), colour(0xD8E6F3), colour(0xBCD0E3)};
inline constexpr Plate kSlatePlate{colour(0x66788F), colour(0x5A6B82), colour(0x5A6B82)};
inline constexpr Plate kCheckBox{kWhite, kWhite, colour(0x8A9CB1)};
inline constexpr QColor kCheckBoxHoverEdge = colour(0x5B7BA3);
inline constexpr QColor kScrollKnob = colour(0xA3B0BE);
inline constexpr QColor kTrackStripe = colour(0xA9CFEF);

} // namespace veltrano::tokens
