#include "chart/RootLabel.h"

#include "appearance/Fonts.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace veltrano {

namespace {

constexpr int kLargestFont = 14;  // pixels
constexpr int kLastTriedFont = 9; // pixels; below it the search ends
constexpr double kSideMargin = 2; // points that the text must stay below the side

double widestOf(const QStringList& lines, const QFontMetricsF& metrics) {
    double widest = 0;
    for (const QString& line : lines)
        widest = std::max(widest, metrics.horizontalAdvance(line));
    return std::ceil(widest);
}

/// The lines of one paragraph at a width; a word that is longer than a line is broken.
QStringList wrapped(const QString& paragraph, const QFont& font, double width) {
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(paragraph.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

} // namespace

LabelFit fitLabel(const QString& text, float side) {
    LabelFit fit;
    if (text.isEmpty() || !(side > 0))
        return fit;
    const auto q = static_cast<double>(side);
    const QStringList paragraphs = text.split(QLatin1Char('\n'));
    fit.lines = paragraphs;
    fit.fontSize = kLargestFont;
    double width = widestOf(fit.lines, QFontMetricsF(VTFontWithSize(fit.fontSize)));
    while (width >= q - kSideMargin && !fit.wraps) {
        --fit.fontSize;
        width = widestOf(fit.lines, QFontMetricsF(VTFontWithSize(fit.fontSize)));
        fit.wraps = fit.fontSize < kLastTriedFont;
    }
    const QFont font = VTFontWithSize(fit.fontSize);
    const QFontMetricsF metrics(font);
    if (fit.wraps) {
        fit.lines.clear();
        for (const QString& paragraph : paragraphs)
            fit.lines += wrapped(paragraph, font, q);
        width = widestOf(fit.lines, metrics);
    }
    const double lineHeight = std::ceil(metrics.height());
    if (lineHeight * static_cast<double>(fit.lines.size()) > q) {
        fit.truncates = true;
        const auto shown = std::max<qsizetype>(1, static_cast<qsizetype>(q / lineHeight));
        if (shown < fit.lines.size()) {
            fit.lines = fit.lines.mid(0, shown);
            fit.lines.last() += QChar(0x2026); // what follows is cut
        }
        fit.lines.last() = metrics.elidedText(fit.lines.last(), Qt::ElideRight, q);
        width = widestOf(fit.lines, metrics);
    }
    fit.size = QSizeF(width, lineHeight * static_cast<double>(fit.lines.size()));
    return fit;
}

void drawLabel(QPainter& painter, const LabelFit& fit, const QPointF& centre, const QColor& colour) {
    if (fit.lines.isEmpty())
        return;
    const QFont font = VTFontWithSize(fit.fontSize);
    const QFontMetricsF metrics(font);
    const double lineHeight = fit.size.height() / static_cast<double>(fit.lines.size());
    // Letters stand upright although y points up.
    painter.save();
    painter.translate(centre);
    painter.scale(1, -1);
    painter.setFont(font);
    painter.setPen(colour);
    double baseline = -fit.size.height() / 2 + metrics.ascent();
    for (const QString& line : fit.lines) {
        painter.drawText(QPointF(-metrics.horizontalAdvance(line) / 2, baseline), line);
        baseline += lineHeight;
    }
    painter.restore();
}

} // namespace veltrano
