#include "appearance/Fonts.h"

#include <QPainter>
#include <QStringList>

namespace veltrano {

QFont interfaceFont(int pixelSize, QFont::Weight weight) {
    QFont font;
    font.setFamilies({QStringLiteral("Lucida Grande"), QStringLiteral("Inter"), QStringLiteral("Noto Sans"),
                      QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

QFont tabularFont(int pixelSize, QFont::Weight weight) {
    // The families of the list draw figures of one width unless a feature asks for others, but for Inter,
    // whose figures are proportional: the family after it serves counters without that jitter.
    QFont font = interfaceFont(pixelSize, weight);
    font.setFamilies({QStringLiteral("Lucida Grande"), QStringLiteral("Noto Sans"),
                      QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    return font;
}

QFont VTFontWithSize(int size, QFont::Weight weight) {
    return interfaceFont(size, weight);
}

QFont VTBoldFontWithSize(int size) {
    return interfaceFont(size, QFont::Bold);
}

void prepareCurrentContextForTextDraw(QPainter& painter) {
    QFont font = painter.font();
    const int strategy = font.styleStrategy() | QFont::NoSubpixelAntialias;
    font.setStyleStrategy(static_cast<QFont::StyleStrategy>(strategy));
    painter.setFont(font);
}

} // namespace veltrano
