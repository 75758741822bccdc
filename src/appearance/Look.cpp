#include "appearance/Look.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Tokens.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>

namespace veltrano {

namespace {

constexpr QSize kBarItemPadding(11, 6); // points beside and above the text of a title in the menu bar
constexpr QMargins kBarItemPlate(2, 2, 2, 2);
constexpr double kBarItemRadius = 5; // points

/// The font of a title in the menu bar: that of its entry, where that has one of its own.
QFont barItemFont(const QStyleOptionMenuItem& item, const QWidget& bar) {
    for (const QAction* action : bar.actions())
        if (action->text() == item.text)
            return action->font().resolve(bar.font());
    return bar.font();
}

/// The style under ours, with the letters of menus underlined for nobody: Alt and the letter work all the
/// same. Titles in the menu bar are drawn here, since a style sheet gives all of them one font.
class BaseStyle final : public QProxyStyle {
public:
    BaseStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        return hint == SH_UnderlineShortcut ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (type != CT_MenuBarItem || !item || !widget)
            return QProxyStyle::sizeFromContents(type, option, size, widget);
        return QFontMetrics(barItemFont(*item, *widget)).size(Qt::TextHideMnemonic, item->text) +
               2 * kBarItemPadding;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element != CE_MenuBarItem || !item || !widget) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        painter->save();
        if (item->state & State_Selected) {
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(tokens::kButtonPressed);
            painter->drawRoundedRect(item->rect.marginsRemoved(kBarItemPlate), kBarItemRadius,
                                     kBarItemRadius);
        }
        painter->setFont(barItemFont(*item, *widget));
        painter->setPen(item->state & State_Enabled ? tokens::kInk : tokens::kDisabled);
        painter->drawText(item->rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine,
                          item->text);
        painter->restore();
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
               "QMenu { background: %3; border: 1px solid %4; padding: 5px; }"
               "QMenu::item { height: 24px; padding: 1px 20px 1px 20px; border-radius: 5px; }"
               "QMenu::item:selected { background: %5; color: %3; }"
               "QMenu::item:disabled { color: %6; }"
               "QMenu::separator { height: 1px; margin: 5px 12px; background: %7; }")
        .arg(tokens::kMenuBar.name(), tokens::kInk.name(), tokens::kWhite.name(), tokens::kMenuEdge.name(),
             tokens::kAccent.name(), tokens::kDisabled.name(), tokens::kLineSoft.name());
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
