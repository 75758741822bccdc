#include "chart/PanelController.h"

#include "appearance/CloseHintView.h"
#include "appearance/Fonts.h"
#include "appearance/TextGeometrics.h"
#include "appearance/Tokens.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrano {

namespace {

constexpr int kLeastWidth = 154; // points, of the content
constexpr int kTallHeight = 58;  // points, with rows
constexpr int kLowHeight = 21;   // points, without
constexpr QPoint kPathAt(8, 4);
constexpr QPoint kSizeCaptionAt(8, 22);
constexpr QPoint kDateCaptionAt(8, 38);
constexpr int kValueLeft = 62;   // points
constexpr int kLineHeight = 13;  // points
constexpr int kTextSize = 11;    // pixels
constexpr int kWidthMargin = 10; // points; once beside the text, and once beside the label
constexpr int kScreenMargin = 4; // points kept free at the screen's right end
constexpr QColor kCaption = tokens::colour(0xD8E2EE);

constexpr AttachedSide kSide = AttachedSide::Right;
constexpr float kDistance = 14;  // points
constexpr float kViewMargin = 2; // points
constexpr float kBorderWidth = 0.7f;
constexpr float kCornerRadius = 8;
constexpr float kArrowBaseWidth = 18;
constexpr float kArrowHeight = 10;
constexpr float kOn = 1;

} // namespace

PanelController::PanelController(NotificationCentre& notifications, QWidget* window, DateText dateText)
    : m_notifications(notifications),
      m_dateText(std::move(dateText)),
      viewHintContent(std::make_unique<CloseHintView>(notifications)),
      window2Attach(window) {
    viewHintContent->resize(kLeastWidth, kTallHeight);
    nPanelInitWidth = std::max(viewHintContent->width(), kLeastWidth);
    const int valueWidth = kLeastWidth - kValueLeft;
    mLabelPath = makeLabel(kPathAt, kLeastWidth - kWidthMargin, tokens::kWhite,
                           interfaceFont(kTextSize, QFont::DemiBold));
    captSize = makeLabel(kSizeCaptionAt, kValueLeft - kSizeCaptionAt.x(), kCaption, interfaceFont(kTextSize));
    captDate = makeLabel(kDateCaptionAt, kValueLeft - kDateCaptionAt.x(), kCaption, interfaceFont(kTextSize));
    mLabelSize =
        makeLabel({kValueLeft, kSizeCaptionAt.y()}, valueWidth, tokens::kWhite, interfaceFont(kTextSize));
    mLabelDate =
        makeLabel({kValueLeft, kDateCaptionAt.y()}, valueWidth, tokens::kWhite, interfaceFont(kTextSize));
    captSize->setText(tr("Size:"));
    captDate->setText(tr("Changed:"));

    const auto observe = [this](const char* name, void (PanelController::*answer)()) {
        m_observers.push_back(m_notifications.addObserver(
            name, [this, answer](const NotificationCentre::Object&) { (this->*answer)(); }));
    };
    observe("applicationIsDeactivating", &PanelController::appDeactivate);
    observe(kPerformCloseHintPanel, &PanelController::CloseHintPanel);
    observe("applicationActivated", &PanelController::appActivated);
}

PanelController::~PanelController() {
    for (const auto token : m_observers)
        m_notifications.removeObserver(token);
    delete attachedWindow;
}

QLabel* PanelController::makeLabel(const QPoint& at, int width, const QColor& colour, const QFont& font) {
    auto* const label = new QLabel(viewHintContent.get());
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->setGeometry(QRect(at, QSize(width, kLineHeight)));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

QSize PanelController::getContentSize() const {
    return viewHintContent->size();
}

QPointF PanelController::getPointInWindow() const {
    return window2Attach ? window2Attach->mapFromGlobal(mPos) : mPos;
}

void PanelController::showPanel() {
    if (attachedWindow)
        return;
    attachedWindow = MAAttachedWindow::initWithView(m_notifications, viewHintContent.get(),
                                                    getPointInWindow(), window2Attach, kSide, kDistance);
    attachedWindow->setBorderColor(QColor::fromRgbF(0.0f, 0.15f, 0.5015f, 0.9f));
    attachedWindow->setBackgroundColor(QColor::fromRgbF(0.25231f, 0.3337f, 0.45f, 0.93f));
    styleWindow();
    attachedWindow->raise();
    // Last: one that comes up under the pointer makes the pointer leave what lies below, and is hidden for
    // it.
    attachedWindow->show();
}

void PanelController::styleWindow() {
    attachedWindow->setViewMargin(kViewMargin);
    attachedWindow->setBorderWidth(kBorderWidth);
    attachedWindow->setCornerRadius(kCornerRadius);
    attachedWindow->setHasArrow(kOn);
    attachedWindow->setDrawsRoundCornerBesideArrow(kOn);
    attachedWindow->setArrowBaseWidth(kArrowBaseWidth);
    attachedWindow->setArrowHeight(kArrowHeight);
}

void PanelController::hidePanel() {
    if (attachedWindow) {
        // The pointer's own event in the panel may be what leads here.
        attachedWindow->hide();
        attachedWindow->releaseView();
        attachedWindow->deleteLater();
        attachedWindow = nullptr;
    }
    m_pathText.clear();
    m_datePath.reset();
    for (QLabel* label : {mLabelPath, mLabelSize, mLabelDate})
        label->clear();
}

void PanelController::setFrameTopLeftPoint(const QPointF& point) {
    mPos = point;
    if (!attachedWindow || !window2Attach)
        return;
    resizeContent(viewHintContent->height());
    attachedWindow->setPoint(getPointInWindow(), kSide);
}

void PanelController::setPathText(const QString& text, const std::optional<QString>& withSize,
                                  const std::optional<std::string>& withFullPath,
                                  const std::optional<QString>& withSizeCapture) {
    showPanel();
    m_pathText = text;
    mLabelSize->setText(withSize.value_or(QString()));
    if (withSizeCapture)
        captSize->setText(*withSizeCapture);
    // The pointer moves within one sector: a date that came late stays.
    if (withFullPath != m_datePath) {
        m_datePath = withFullPath;
        mLabelDate->setText(withFullPath && m_dateText ? m_dateText(*withFullPath) : QString());
    }
    fitRows();
}

void PanelController::setLateDateText(const std::string& path, const QString& date) {
    if (path != m_datePath)
        return;
    mLabelDate->setText(date);
    fitRows();
}

void PanelController::fitRows() {
    const bool hasSize = !mLabelSize->text().isEmpty();
    const bool hasDate = !mLabelDate->text().isEmpty();
    captSize->setVisible(hasSize);
    mLabelSize->setVisible(hasSize);
    captDate->setVisible(hasDate);
    mLabelDate->setVisible(hasDate);
    resizeContent(hasSize || hasDate ? kTallHeight : kLowHeight);
}

double PanelController::calcWidthForPathElement() const {
    if (m_pathText.isEmpty())
        return static_cast<double>(nPanelInitWidth);
    return widthForHeight(m_pathText, mLabelPath->font(), kLineHeight);
}

int PanelController::getRoomOnScreen() const {
    const QScreen* screen = QGuiApplication::screenAt(mPos.toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    constexpr int beside = static_cast<int>(kDistance + kArrowHeight + 2 * kViewMargin) + kScreenMargin;
    const int right = screen->availableGeometry().right() + 1;
    return std::max(static_cast<int>(nPanelInitWidth), right - static_cast<int>(mPos.x()) - beside);
}

QSize PanelController::fitContent(int height) const {
    const int initWidth = static_cast<int>(nPanelInitWidth);
    const int wanted = static_cast<int>(calcWidthForPathElement() + kWidthMargin);
    int width = viewHintContent->width();
    if (wanted > initWidth)
        width = std::min(wanted + kWidthMargin, getRoomOnScreen()); // a name may be wider than any screen
    else
        width = initWidth;
    return {width, height};
}

void PanelController::resizeContent(int height) {
    if (!attachedWindow)
        return;
    const QSize old = viewHintContent->size();
    const QSize fitted = fitContent(height);
    mLabelPath->resize(fitted.width() - kWidthMargin, kLineHeight);
    elidePath();
    if (fitted == old)
        return;
    viewHintContent->resize(fitted);
    attachedWindow->needUpdateSize();
    // The shape's limits follow its height.
    if (fitted.height() != old.height())
        styleWindow();
}

void PanelController::elidePath() {
    const int room = mLabelPath->width();
    mLabelPath->setText(mLabelPath->fontMetrics().elidedText(m_pathText, Qt::ElideMiddle, room));
    mLabelPath->setAccessibleName(m_pathText);
}

} // namespace veltrano
