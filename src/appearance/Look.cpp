#include "appearance/Look.h"

#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/Tokens.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>

#include <cmath>

namespace veltrano {

namespace {

constexpr QSize kBarItemPadding(11, 6); // points beside and above the text of a title in the menu bar
constexpr QMargins kBarItemPlate(2, 2, 2, 2);
constexpr double kBarItemRadius = 5; // points
constexpr int kMenuRadius = 9;       // points

/// The font of a title in the menu bar: that of its entry, where that has one of its own.
QFont barItemFont(const QStyleOptionMenuItem& item, const QWidget& bar) {
    for (const QAction* action : bar.actions())
        if (action->text() == item.text)
            return action->font().resolve(bar.font());
    return bar.font();
}

/// The pixels of a rectangle with round corners, those that lie in it by half or more. A polygon of the same
/// outline loses some of them on its right and lower side.
QRegion roundedRegion(const QRect& rect, int radius) {
    QRegion region(rect.adjusted(0, radius, 0, -radius));
    for (int row = 0; row < radius; ++row) {
        const double height = radius - row - 0.5; // of the row's middle above that of the corner's circle
        const int inset = radius - qRound(std::sqrt(radius * radius - height * height));
        region += QRect(rect.left() + inset, rect.top() + row, rect.width() - 2 * inset, 1);
        region += QRect(rect.left() + inset, rect.bottom() - row, rect.width() - 2 * inset, 1);
    }
    return region;
}

/// Whether the surfaces of windows are always mixed with what lies under them, and so need no mask.
bool isAlwaysComposed() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// The style under ours, with the letters of menus underlined for nobody: Alt and the letter work all the
/// same. Titles in the menu bar are drawn here, since a style sheet gives all of them one font.
class BaseStyle final : public QProxyStyle {
public:
    BaseStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        if (hint == SH_UnderlineShortcut)
            return 0;
        if (auto* const mask = qstyleoption_cast<QStyleHintReturnMask*>(returnData);
            hint == SH_Menu_Mask && mask && option) {
            if (isAlwaysComposed())
                return 0;
            mask->region = roundedRegion(option->rect, kMenuRadius);
            return 1;
        }
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }

    using QProxyStyle::polish;
    void polish(QWidget* widget) override {
        QProxyStyle::polish(widget);
        if (isAlwaysComposed() && qobject_cast<QMenu*>(widget))
            widget->setAttribute(Qt::WA_TranslucentBackground);
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
               "QMenu { background: %3; border: 1px solid %4; border-radius: 9px; padding: 5px; }"
               "QMenu::item { height: 24px; padding: 1px 20px 1px 20px; border-radius: 5px; }"
               "QMenu::item:selected { background: %5; color: %3; }"
               "QMenu::item:disabled { color: %6; }"
               "QMenu::separator { height: 1px; margin: 5px 7px; background: %7; }")
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
