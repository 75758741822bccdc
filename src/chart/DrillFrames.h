#pragma once

#include <QImage>
#include <QTransform>

#include <cstdint>
#include <vector>

namespace veltrano {

/// What a drill keeps from frame to frame, so that a frame neither walks the tree nor paints the fading chart
/// anew. Forgotten as soon as the chart is told that something has changed. Part of the chart.
struct DrillFrames {
    /// A sector below the drilling root, as the walk met it: each folder before what it holds.
    struct Child {
        int nSubLevel;
        double dSkAngle;    ///< Fraction of a turn, as measured.
        double dDeltaAngle; ///< The same.
        std::int16_t colorFlag;
        std::uint8_t timeCode;
    };

    std::vector<Child> children;
    bool bChildrenKnown = false;

    QImage outerChart;       ///< The chart that fades, opaque; null if it is not known.
    QTransform outerToPixel; ///< From the chart's coordinates to the pixels for which it was painted.

    void forget() {
        bChildrenKnown = false;
        outerChart = QImage();
    }
};

} // namespace veltrano
