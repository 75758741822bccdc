#pragma once

#include "appearance/ApplicationIcon.h"
#include "platform/LauncherProgress.h"

#include <QColor>
#include <QImage>

#include <optional>
#include <vector>

namespace veltrano {

/// A plain icon that keeps what is shown in its place.
class RecordedIcon final : public ApplicationIcon {
public:
    static constexpr int kSide = 128;
    static QColor colour() { return {10, 20, 30}; }

    RecordedIcon() : icon(kSide, kSide, QImage::Format_ARGB32_Premultiplied) { icon.fill(colour()); }

    QImage getApplicationIconImage() const override { return icon; }
    void setApplicationIconImage(const QImage& picture) override { shown.push_back(picture); }

    /// The colour at a point of what is shown, y from the lower edge up.
    QColor at(int x, int y) const { return shown.back().pixelColor(x, kSide - 1 - y); }

    QImage icon;
    std::vector<QImage> shown;
};

/// Keeps what a dock is told.
class RecordedLauncher final : public LauncherProgress {
public:
    void setProgress(std::optional<double> fraction) override { told.push_back(fraction); }

    std::vector<std::optional<double>> told;
};

} // namespace veltrano
