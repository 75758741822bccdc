#pragma once

#include "appearance/ApplicationIcon.h"

namespace veltrano {

/// The application's icon as the icon of its windows, which task lists and docks show. Gives the program its
/// own icon when it is made. Lives as long as the program, with an application; main thread.
class WindowIcon final : public ApplicationIcon {
public:
    static constexpr int kSide = 128; // points

    WindowIcon();

    QImage getApplicationIconImage() const override;
    void setApplicationIconImage(const QImage& picture) override;
};

} // namespace veltrano
