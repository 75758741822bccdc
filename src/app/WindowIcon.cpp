#include "app/WindowIcon.h"

#include "appearance/Images.h"

#include <QApplication>
#include <QIcon>

namespace veltrano {

namespace {

QPixmap programsOwn() {
    return renderImage(QStringLiteral("app-icon"), QSizeF(WindowIcon::kSide, WindowIcon::kSide),
                       qApp->devicePixelRatio());
}

} // namespace

WindowIcon::WindowIcon() {
    QApplication::setWindowIcon(QIcon(programsOwn()));
}

QImage WindowIcon::getApplicationIconImage() const {
    return QApplication::windowIcon().pixmap(QSize(kSide, kSide), qApp->devicePixelRatio()).toImage();
}

void WindowIcon::setApplicationIconImage(const QImage& picture) {
    QApplication::setWindowIcon(QIcon(QPixmap::fromImage(picture)));
}

} // namespace veltrano
