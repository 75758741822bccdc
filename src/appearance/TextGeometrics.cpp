#include "appearance/TextGeometrics.h"

#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace veltrano {

QSizeF sizeForWidth(const QString& text, const QFont& font, double width, double height) {
    if (text.isEmpty())
        return {0, 0};
    QString lines = text;
    lines.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(lines, font);
    QTextOption option;
    option.setWrapMode(width > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout.setTextOption(option);
    constexpr double kNoLimit = 1e6;
    double widest = 0;
    double below = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width > 0 ? width : kNoLimit);
        // The first line is counted whatever the height, so that text is never measured as nothing.
        if (height > 0 && below > 0 && below + line.height() > height)
            break;
        widest = std::max(widest, line.naturalTextWidth());
        below += line.height();
    }
    layout.endLayout();
    return {std::ceil(widest), std::ceil(height > 0 ? std::min(below, height) : below)};
}

double heightForWidth(const QString& text, const QFont& font, double width) {
    return sizeForWidth(text, font, width, 0).height();
}

double widthForHeight(const QString& text, const QFont& font, double height) {
    return sizeForWidth(text, font, 0, height).width();
}

} // namespace veltrano
