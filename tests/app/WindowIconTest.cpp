#include "app/WindowIcon.h"

#include <QApplication>
#include <QIcon>
#include <QWidget>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

TEST(WindowIcon, givesTheProgramItsOwnIcon) {
    QApplication::setWindowIcon(QIcon());
    const WindowIcon icon;
    EXPECT_FALSE(QApplication::windowIcon().isNull());
    const QImage picture = icon.getApplicationIconImage();
    EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(128, 128));
    EXPECT_GT(picture.pixelColor(64, 64).alpha(), 0);
}

TEST(WindowIcon, whatIsSetIsTheIconOfEveryWindow) {
    WindowIcon icon;
    QWidget window;
    QImage picture(128, 128, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(1, 2, 3));
    icon.setApplicationIconImage(picture);
    EXPECT_EQ(window.windowIcon().pixmap(128).toImage().pixelColor(5, 5), QColor(1, 2, 3));
    EXPECT_EQ(icon.getApplicationIconImage().pixelColor(5, 5), QColor(1, 2, 3));
    QApplication::setWindowIcon(QIcon());
}

} // namespace
} // namespace veltrano
