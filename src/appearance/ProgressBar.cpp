#include "appearance/ProgressBar.h"

#include "appearance/Painting.h"
#include "appearance/ProgressBarAccessible.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace veltrano {

namespace {

constexpr int kStripePeriod = 32;  // points
constexpr int kPoleInterval = 40;  // milliseconds between two steps of the pole
constexpr double kPoleStep = 1.92; // points a step: one and a half periods a second
constexpr int kPetals = 12;
constexpr int kSpinnerInterval = 83; // milliseconds between two petals: one turn a second

} // namespace

ProgressBar::ProgressBar(QWidget* parent) : QWidget(parent) {
    installProgressBarAccessible();
    setAccessibleName(tr("Scan progress"));
}

void ProgressBar::setDoubleValue(double value) {
    takeValue(value);
}

void ProgressBar::setMinValue(double least) {
    m_dLeast = least;
    takeValue(m_dValue);
    update();
}

void ProgressBar::setMaxValue(double greatest) {
    m_dGreatest = greatest;
    takeValue(m_dValue);
    update();
}

void ProgressBar::takeValue(double value) {
    if (std::isnan(value))
        return;
    const double bounded = std::max(m_dLeast, std::min(value, m_dGreatest));
    if (bounded == m_dValue)
        return;
    m_dValue = bounded;
    update();
    QAccessibleValueChangeEvent event(this, m_dValue);
    QAccessible::updateAccessibility(&event);
}

double ProgressBar::fraction() const {
    const double width = m_dGreatest - m_dLeast;
    return width > 0 ? (m_dValue - m_dLeast) / width : 0;
}

void ProgressBar::setIndeterminate(bool indeterminate) {
    if (m_bIndeterminate == indeterminate)
        return;
    m_bIndeterminate = indeterminate;
    updateTimer();
    update();
}

void ProgressBar::startAnimation() {
    m_bAnimated = true;
    updateTimer();
}

void ProgressBar::stopAnimation() {
    m_bAnimated = false;
    updateTimer();
}

void ProgressBar::updateTimer() {
    if (m_bIndeterminate && m_bAnimated && isVisible())
        m_timer.start(kPoleInterval, this);
    else
        m_timer.stop();
}

void ProgressBar::showEvent(QShowEvent*) {
    updateTimer();
}

void ProgressBar::hideEvent(QHideEvent*) {
    updateTimer();
}

void ProgressBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId())
        return;
    m_dStripeOffset = std::fmod(m_dStripeOffset + kPoleStep, kStripePeriod);
    update();
}

void ProgressBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF track = rect();
    const double radius = track.height() / 2;
    drawPlate(painter, track, tokens::kTrack, radius);
    if (m_bIndeterminate) {
        drawBarberPole(painter, track);
        return;
    }
    // A fill narrower than its own rounded ends would bulge out of the track.
    const double width = track.width() * fraction();
    if (width < track.height())
        return;
    drawPlate(painter, QRectF(track.left(), track.top(), width, track.height()), tokens::kTrackFill, radius);
}

void ProgressBar::drawBarberPole(QPainter& painter, const QRectF& track) const {
    const double radius = track.height() / 2;
    drawPlate(painter, track, tokens::kTrackFill, radius);
    QPainterPath inside;
    inside.addRoundedRect(track.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(inside);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens::kTrackStripe);
    const double slant = track.height();
    constexpr double kStripeWidth = kStripePeriod / 2.0;
    for (double x = track.left() - 2 * kStripePeriod + m_dStripeOffset; x < track.right();
         x += kStripePeriod) {
        const QPointF corners[] = {{x, track.bottom()},
                                   {x + kStripeWidth, track.bottom()},
                                   {x + kStripeWidth + slant, track.top()},
                                   {x + slant, track.top()}};
        painter.drawPolygon(corners, 4);
    }
}

Spinner::Spinner(QWidget* parent) : QWidget(parent) {}

void Spinner::showEvent(QShowEvent*) {
    m_timer.start(kSpinnerInterval, this);
}

void Spinner::hideEvent(QHideEvent*) {
    m_timer.stop();
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId())
        return;
    m_nPhase = (m_nPhase + 1) % kPetals;
    update();
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const double side = std::min(width(), height());
    for (int petal = 0; petal < kPetals; ++petal) {
        const int age = (m_nPhase - petal + kPetals) % kPetals;
        QColor colour = tokens::kAccent;
        colour.setAlphaF(static_cast<float>(1.0 - 0.85 * age / (kPetals - 1)));
        painter.setPen(QPen(colour, side * 0.09, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * petal / kPetals);
        painter.drawLine(QPointF(0, -side * 0.26), QPointF(0, -side * 0.43));
        painter.restore();
    }
}

} // namespace veltrano
