#include "chart/PaintStrips.h"

#include <QImage>
#include <QPainter>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

namespace veltrano {

namespace {

/// A part of an image that shares its pixels.
QImage stripOf(QImage& image, int from, int to) {
    return {image.bits() + static_cast<qsizetype>(from) * image.bytesPerLine(), image.width(), to - from,
            image.bytesPerLine(), image.format()};
}

} // namespace

bool paintInStrips(QPainter& painter, int row, const std::function<void(QPainter&, int)>& paint) {
    QPaintDevice* const device = painter.device();
    if (device->devType() != QInternal::Image || painter.hasClipping() || painter.opacity() != 1.0 ||
        QThread::idealThreadCount() < 2)
        return false;
    QImage& image = *static_cast<QImage*>(device);
    if (!image.isDetached() || row <= 0 || row >= image.height())
        return false;

    const QTransform toPixel = painter.deviceTransform();
    const QPainter::RenderHints hints = painter.renderHints();
    const auto paintStrip = [&](QImage strip, int from, int number) {
        QPainter stripPainter(&strip);
        stripPainter.setRenderHints(hints);
        stripPainter.setTransform(toPixel * QTransform::fromTranslate(0, -from));
        paint(stripPainter, number);
    };
    QImage upper = stripOf(image, 0, row);
    QImage lower = stripOf(image, row, image.height());
    QSemaphore done;
    const auto paintUpper = [&] {
        paintStrip(std::move(upper), 0, 0);
        done.release();
    };
    const bool helped = QThreadPool::globalInstance()->tryStart(paintUpper);
    paintStrip(std::move(lower), row, 1);
    if (!helped)
        paintUpper();
    done.acquire();
    return true;
}

} // namespace veltrano
