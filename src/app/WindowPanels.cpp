#include "app/WindowPanels.h"

#include "appearance/CCTableView.h"
#include "appearance/Colours.h"
#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Painting.h"
#include "appearance/PushButton.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <vector>

namespace veltrano {

namespace {

constexpr int kCorner = 24;         // points, of a card's corner images
constexpr int kFaceInset = 8;       // points from the panel to the inside of the card's edge
constexpr double kFaceRadius = 7.0; // points

/// One entry of the legend, from the left to the right.
struct LegendEntry {
    const char* text;
    QColor colour;
    int leftGap; // points before the swatch
};

constexpr int kSwatch = 12;                  // points
constexpr double kSwatchRadius = 3;          // points
constexpr int kSwatchGap = 5;                // points between swatch and text
constexpr int kLegendTextSize = 11;          // pixels
constexpr int kEntryGap = 16;                // points
constexpr int kGroupGap = 30;                // points, where ages end and states begin
constexpr QRect kRemovePlate(12, 8, 28, 28); // in the footer
constexpr int kStates = 2;                   // entries of the second group

void drawImage(QPainter& painter, const QRectF& target, const QString& name) {
    const QPixmap picture = image(name, painter.device()->devicePixelRatioF());
    painter.drawPixmap(target, picture, QRectF(picture.rect()));
}

} // namespace

void drawCard(QPainter& painter, const QRect& panel) {
    const int left = panel.left();
    const int top = panel.top();
    const int right = left + panel.width() - kCorner;
    const int bottom = top + panel.height() - kCorner;
    const int middleWidth = panel.width() - 2 * kCorner;
    const int middleHeight = panel.height() - 2 * kCorner;
    auto part = [&](const char* name, int x, int y, int w, int h) {
        drawImage(painter, QRectF(x, y, w, h), QStringLiteral("panelBack") + QLatin1String(name));
    };
    part("TL", left, top, kCorner, kCorner);
    part("TC", left + kCorner, top, middleWidth, kCorner);
    part("TR", right, top, kCorner, kCorner);
    part("ML", left, top + kCorner, kCorner, middleHeight);
    part("MR", right, top + kCorner, kCorner, middleHeight);
    part("BL", left, bottom, kCorner, kCorner);
    part("BC", left + kCorner, bottom, middleWidth, kCorner);
    part("BR", right, bottom, kCorner, kCorner);

    // The card's face falls over its whole height, so it is drawn in one piece and not as the middle part.
    const QRectF face = QRectF(panel).adjusted(kFaceInset, kFaceInset, -kFaceInset, -kFaceInset);
    QLinearGradient gradient(face.topLeft(), face.bottomLeft());
    gradient.setColorAt(0, tokens::kCard.top);
    gradient.setColorAt(1, tokens::kCard.foot);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(face, kFaceRadius, kFaceRadius);
    painter.restore();
}

void HeaderBand::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawImage(painter, rect(), QStringLiteral("slr"));
    drawHairline(painter, QPointF(0, height() - 1), width(), Qt::Horizontal, tokens::kHairline);
}

SidebarPanel::SidebarPanel(QWidget* parent) : QWidget(parent), m_pTable(new CCTableView(this)) {}

void SidebarPanel::resizeEvent(QResizeEvent*) {
    constexpr int kHairline = 1; // points
    m_pTable->setGeometry(rect().adjusted(0, kTopInset, -kHairline, 0));
}

void SidebarPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, tokens::kSidebar.top);
    gradient.setColorAt(1, tokens::kSidebar.foot);
    painter.fillRect(rect(), gradient);
    drawHairline(painter, QPointF(width() - 1, 0), height(), Qt::Vertical, tokens::kSidebar.edge);
}

void RightColumn::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawCard(painter, QRect(0, 0, width(), height() - kLowerHeight));
    drawCard(painter, QRect(0, height() - kLowerHeight, width(), kLowerHeight));
}

FooterBand::FooterBand(QWidget* parent) : QWidget(parent), m_pRemoveEntry(new PushButton(this)) {
    m_pRemoveEntry->setGlyph(QStringLiteral("extra/remove-entry"));
    m_pRemoveEntry->setPlateGeometry(kRemovePlate);
    m_pRemoveEntry->setAccessibleName(tr("Remove folder from the list"));
    m_pRemoveEntry->setToolTip(tr("Remove folder from the list"));
    m_pRemoveEntry->setEnabled(false);
    setAccessibleName(tr("Colours of the chart by age"));
}

void FooterBand::setLegendRange(int from, int to) {
    m_nLegendFrom = from;
    m_nLegendTo = to;
    update();
}

void FooterBand::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawImage(painter, rect(), QStringLiteral("panelBG"));

    const Colours& colours = Colours::sharedColours();
    std::vector<LegendEntry> entries = {
        {QT_TR_NOOP("1 week"), colours.getColorByTimeCode(1), 0},
        {QT_TR_NOOP("30 days"), colours.getColorByTimeCode(3), kEntryGap},
        {QT_TR_NOOP("1 year"), colours.getColorByTimeCode(5), kEntryGap},
        {QT_TR_NOOP("older"), colours.getColorByTimeCode(7), kEntryGap},
        {QT_TR_NOOP("Trash"), colours.cTrashColor(), kGroupGap},
        {QT_TR_NOOP("collected"), colours.cCollectedColor(), kEntryGap},
    };
    const QFont font = interfaceFont(kLegendTextSize);
    const QFontMetricsF metrics(font);
    const QString lead = tr("Changed within");
    const double leadWidth = metrics.horizontalAdvance(lead) + kSwatchGap + 8;
    auto entryWidth = [&](const LegendEntry& entry) {
        return entry.leftGap + kSwatch + kSwatchGap + metrics.horizontalAdvance(tr(entry.text));
    };
    double width = leadWidth;
    for (const LegendEntry& entry : entries)
        width += entryWidth(entry);
    // Where room is short the lead text goes first, then the states together, then ages from the end.
    const double room = m_nLegendTo - m_nLegendFrom;
    const bool showLead = width <= room;
    if (!showLead)
        width -= leadWidth;
    const auto dropLast = [&] {
        width -= entryWidth(entries.back());
        entries.pop_back();
    };
    if (width > room) {
        for (int state = 0; state < kStates; ++state)
            dropLast();
    }
    while (!entries.empty() && width > room)
        dropLast();

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    const double middle = (height() + 1) / 2.0;
    double x = m_nLegendFrom;
    auto text = [&](const QString& words) {
        painter.setPen(tokens::kInk2);
        const double advance = metrics.horizontalAdvance(words);
        painter.drawText(QRectF(x, middle - 10, advance + 1, 20), Qt::AlignVCenter | Qt::AlignLeft, words);
        x += advance;
    };
    if (showLead) {
        text(lead);
        x += kSwatchGap + 8;
    }
    for (const LegendEntry& entry : entries) {
        x += entry.leftGap;
        painter.setBrush(entry.colour);
        painter.setPen(QPen(entry.colour.darker(125), 1));
        painter.drawRoundedRect(QRectF(x + 0.5, middle - kSwatch / 2.0 + 0.5, kSwatch - 1, kSwatch - 1),
                                kSwatchRadius, kSwatchRadius);
        x += kSwatch + kSwatchGap;
        text(tr(entry.text));
    }
}

} // namespace veltrano
