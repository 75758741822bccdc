#pragma once

class QPainter;
class QRectF;

namespace veltrano {

/// A small percentage bar drawn with images: a left and a right cap, each 4 wide, and a row between them. A
/// value; main thread. A copy begins at 0.
class SGProgress {
public:
    SGProgress() = default;
    SGProgress(const SGProgress&) {}
    SGProgress& operator=(const SGProgress&) = delete;
    ~SGProgress() = default;

    /// A percentage from 0 to 100. Less shows as nothing, more as full.
    void setdValue(double percentage) { mdVal = percentage; }
    double getdValue() const { return mdVal; }

    /// Draws the bar at the top of a rectangle, 12 points high. Nothing where width or height is below 12.
    /// The left cap lights up at a fill of 2 points, the right one at 100 percent only.
    void DrawAtRect(QPainter& painter, const QRectF& rectangle) const;

private:
    double mdVal = 0;
};

} // namespace veltrano
