#include "appearance/RowCells.h"

#include "appearance/Images.h"
#include "appearance/Tokens.h"

#include <QPainter>
#include <QRadialGradient>

#include <cmath>

namespace veltrano {

namespace {

constexpr double kDisabledOpacity = 0.4;
constexpr double kDiscRadius = 12; // points
constexpr double kShadowWidth = 4; // points beyond the disc
constexpr float kShadowAlpha = 0.8F;

QRectF centred(const QRectF& frame, const QSizeF& size) {
    return {QPointF(std::floor(frame.x() + (frame.width() - size.width()) / 2),
                    std::floor(frame.y() + (frame.height() - size.height()) / 2)),
            size};
}

/// A soft light of the focus colour around a disc.
void drawShadow(QPainter& painter, const QPointF& centre) {
    const double radius = kDiscRadius + kShadowWidth;
    QColor inner = tokens::kFocus;
    inner.setAlphaF(kShadowAlpha);
    QColor outer = tokens::kFocus;
    outer.setAlpha(0);
    QRadialGradient gradient(centre, radius);
    gradient.setColorAt(kDiscRadius / radius - 0.1, inner);
    gradient.setColorAt(1, outer);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(centre, radius, radius);
    painter.restore();
}

} // namespace

QRectF IconCell::getIconDrawRect(const QRectF& frame, const QSizeF& image) {
    return centred(frame, image);
}

void IconCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    if (const auto* const icon = std::get_if<QPixmap>(&objectValue()))
        painter.drawPixmap(getIconDrawRect(frame, icon->deviceIndependentSize()).topLeft(), *icon);
}

RowButtonCell::RowButtonCell(QString imageName) : m_imageName(std::move(imageName)) {}

void RowButtonCell::setState(bool pointed, bool pressed) {
    m_bPointed = pointed;
    m_bPressed = pressed;
}

QRectF RowButtonCell::getButtonDrawRect(const QRectF& frame, double foot) {
    return centred(frame.adjusted(0, 0, 0, -foot), QSizeF(kSide, kSide));
}

const QPixmap& RowButtonCell::getPicture(const QString& name, qreal devicePixelRatio) {
    QPixmap& picture = m_pictures[name];
    if (picture.isNull() || picture.devicePixelRatio() != devicePixelRatio)
        picture = renderImage(name, QSizeF(kSide, kSide), devicePixelRatio);
    return picture;
}

void RowButtonCell::drawWithFrame(QPainter& painter, const QRectF& frame) {
    const QRectF rectangle = getButtonDrawRect(frame, m_dFoot);
    const bool isPressed = m_bEnabled && m_bPressed;
    const QString name = isPressed ? m_imageName + QStringLiteral("-pressed") : m_imageName;
    painter.save();
    if (!m_bEnabled)
        painter.setOpacity(kDisabledOpacity);
    else if (m_bPointed && !m_bPressed)
        drawShadow(painter, rectangle.center());
    painter.drawPixmap(rectangle.topLeft(), getPicture(name, painter.device()->devicePixelRatioF()));
    painter.restore();
}

} // namespace veltrano
