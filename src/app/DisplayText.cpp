#include "app/DisplayText.h"

namespace veltrano {

namespace {

/// Marks that turn the direction of the text could make a name look like another; the others break its line.
bool breaksOrTurnsText(QChar character) {
    switch (character.category()) {
    case QChar::Other_Format:
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

QString displayText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    constexpr char16_t kControlPictures = 0x2400; // U+2400 to U+241F picture the characters 0 to 31
    for (QChar& character : text) {
        const char16_t unit = character.unicode();
        if (unit < 0x20)
            character = QChar(static_cast<char16_t>(kControlPictures + unit));
        else if (unit == 0x7F)
            character = QChar(char16_t{0x2421});
        else if (breaksOrTurnsText(character))
            character = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace veltrano
