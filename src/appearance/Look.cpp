#include "appearance/Look.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Tokens.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace veltrano {

namespace {

/// The style under ours, with the letters of menus underlined for nobody: Alt and the letter work all the
/// same.
class BaseStyle final : public QProxyStyle {
public:
    BaseStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        return hint == SH_UnderlineShortcut ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(renderImage(QStringLiteral("app-icon"), QSizeF(side, side), 1));
    return icon;
}

QPalette palette() {
    QPalette result;
    result.setColor(QPalette::Window, tokens::colour(0xE8EEF5));
    result.setColor(QPalette::Base, tokens::kWhite);
    result.setColor(QPalette::AlternateBase, tokens::kMenuBar);
    result.setColor(QPalette::Button, tokens::kButton.foot);
    result.setColor(QPalette::Highlight, tokens::kAccent);
    result.setColor(QPalette::HighlightedText, tokens::kWhite);
    result.setColor(QPalette::Link, tokens::kAccent);
    result.setColor(QPalette::ToolTipBase, tokens::kWhite);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        result.setColor(role, tokens::kInk);
        result.setColor(QPalette::Disabled, role, tokens::kDisabled);
    }
    result.setColor(QPalette::PlaceholderText, tokens::kInk3);
    return result;
}

QString menuLook() {
    return QStringLiteral(
               "QMenuBar { background: %1; color: %2; border: none; spacing: 0; padding-left: 3px; }"
               "QMenuBar::item { background: transparent; padding: 5px 9px 4px 9px; margin: 2px; }"
               "QMenuBar::item:selected { background: %3; border-radius: 5px; }"
               "QMenu { background: %4; border: 1px solid %5; padding: 5px; }"
               "QMenu::item { height: 24px; padding: 1px 20px 1px 20px; border-radius: 5px; }"
               "QMenu::item:selected { background: %6; color: %4; }"
               "QMenu::item:disabled { color: %7; }"
               "QMenu::separator { height: 1px; margin: 5px 12px; background: %8; }")
        .arg(tokens::kMenuBar.name(), tokens::kInk.name(), tokens::kButtonPressed.name(),
             tokens::kWhite.name(), tokens::kMenuEdge.name(), tokens::kAccent.name(),
             tokens::kDisabled.name(), tokens::kLineSoft.name());
}

} // namespace

void applyLook(QApplication& application) {
    application.setStyle(new BaseStyle);
    application.setPalette(palette());
    application.setFont(interfaceFont(12));
    application.setStyleSheet(menuLook());
    QGuiApplication::setWindowIcon(programIcon());
}

} // namespace veltrano
