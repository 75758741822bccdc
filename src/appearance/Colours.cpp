#include "appearance/Colours.h"

namespace veltrano {

namespace {

QColor grey(float value) {
    return QColor::fromRgbF(value, value, value);
}

/// Text on a plain table row.
constexpr float kTextGrey = 0.2f;

} // namespace

Colours& Colours::sharedColours() {
    static Colours colours;
    return colours;
}

void Colours::initColors() {
    m_cTrashColor = QColor::fromRgbF(0.4862745f, 0.4509804f, 0.6431373f);
    m_cHiddenColor = grey(0.9372549f);
    m_cOccupiedColor = QColor::fromRgbF(0.4313725f, 0.6745098f, 0.8980392f);
    m_cFreeColor = QColor::fromRgbF(0.6274510f, 0.6666667f, 0.7254902f);
    m_cCollectedColor = QColor::fromRgbF(1.0f, 0.6156863f, 0.6313725f);
    m_cEndRootColor = QColor::fromRgbF(0.7764706f, 0.9176471f, 0.9607843f);
    m_cLineColor = QColor::fromRgbF(0.1176471f, 0.1372549f, 0.1568627f);
    m_secTextColor = QColor::fromRgbF(1.0f, 0.8901961f, 0.8941176f);
    m_secTextColor2 = QColor::fromRgbF(0.9450980f, 1.0f, 1.0f);

    const QColor week = QColor::fromRgbF(0.7686275f, 0.8980392f, 0.9450980f);
    const QColor month = QColor::fromRgbF(0.5529412f, 0.8196078f, 0.9921569f);
    const QColor year = QColor::fromRgbF(0.4313725f, 0.6745098f, 0.8980392f);
    m_aSectorColors = {
        QColor::fromRgbF(0.3960784f, 0.6886275f, 0.8741176f), week, week, month, month, year, year,
        QColor::fromRgbF(0.5411765f, 0.7019608f, 0.8274510f)};
}

QColor Colours::getColorByTimeCode(std::uint8_t timeCode) const {
    return m_aSectorColors[timeCode < m_aSectorColors.size() ? timeCode : 0];
}

QColor Colours::getPrimaryTableTextColor() const {
    if (m_bHiddOrTrashedDrawing)
        return m_secTextColor2;
    if (m_bCollectedItemDrawing)
        return m_secTextColor;
    return getSecondaryTableTextColor();
}

QColor Colours::getSecondaryTableTextColor() const {
    return m_bSelectedCellDrawing ? QColor(Qt::white) : grey(kTextGrey);
}

} // namespace veltrano
