#include "appearance/Images.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace veltrano {

namespace {

QString resourcePath(const QString& name) {
    return QStringLiteral(":/images/%1.svg").arg(name);
}

QPixmap render(QSvgRenderer& drawing, const QSizeF& size, qreal devicePixelRatio) {
    const QSizeF pixels = size * devicePixelRatio;
    QPixmap pixmap(static_cast<int>(std::ceil(pixels.width())), static_cast<int>(std::ceil(pixels.height())));
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        drawing.render(&painter, QRectF(QPointF(0, 0), pixels));
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

} // namespace

QPixmap image(const QString& name, qreal devicePixelRatio) {
    static QHash<QString, QPixmap> kept;
    QPixmap& pixmap = kept[QStringLiteral("%1@%2").arg(name).arg(devicePixelRatio)];
    if (pixmap.isNull()) {
        QSvgRenderer drawing(resourcePath(name));
        if (drawing.isValid())
            pixmap = render(drawing, drawing.defaultSize(), devicePixelRatio);
    }
    return pixmap;
}

QPixmap renderImage(const QString& name, const QSizeF& size, qreal devicePixelRatio) {
    QSvgRenderer drawing(resourcePath(name));
    if (!drawing.isValid() || size.isEmpty())
        return {};
    drawing.setAspectRatioMode(Qt::IgnoreAspectRatio);
    return render(drawing, size, devicePixelRatio);
}

QColor mainTextColor() {
    return image(QStringLiteral("1pixcolor"), 1.0).toImage().pixelColor(0, 0);
}

} // namespace veltrano
