// What explains the chart in words: the root's label, the hover panel, and the way up from the path control.

#include "chart/RadialController.h"

#include "chart/ChartHost.h"
#include "chart/HintText.h"
#include "chart/PanelController.h"
#include "chart/RadialView.h"
#include "chart/RootLabel.h"
#include "scan/SizeText.h"

#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QPainter>

#include <numbers>

namespace veltrano {

namespace {

QColor labelColour(bool scanning, float alpha) {
    // Light while scanning, so that it stands out on the dark middle of the dial.
    return scanning ? QColor::fromRgbF(0.75f, 0.8f, 0.85f, alpha) : QColor::fromRgbF(0.2f, 0.2f, 0.2f, alpha);
}

} // namespace

void RadialController::DrawRootLabel(QPainter& painter) const {
    DrawRootLabel(painter, *m_pRoot, m_fDrawAlpha, m_layout.getRadius(0));
}

void RadialController::DrawRootLabel(QPainter& painter, const VolumeFolderProtocol& item, float withAlpha,
                                     double withRadius) const {
    QString text = m_pHost ? m_pHost->getDisplayText(item.getDisplayName()) : QString();
    if (text.isEmpty())
        return;
    if (item.getOccSize() > 0)
        text += QLatin1Char('\n') + QString::fromStdString(stringFromFileSizeShort1(item.getWholeItemSize()));
    // The square inside the disc.
    const auto side = static_cast<float>(withRadius * std::numbers::sqrt2);
    drawLabel(painter, fitLabel(text, side), m_layout.m_Center,
              labelColour(isSelectedScanningRoot(), withAlpha));
}

void RadialController::ShowToolTipforItem(TreeObject* item) {
    if (radialView && radialView->getChartBounds().contains(radialView->getMouseLocation()))
        showHint(item, QCursor::pos());
    else
        hidePanel();
}

void RadialController::showHintOfKeys() {
    if (radialView && radialView->hasFocus() && getFocusOutline()) {
        const QPointF middle = radialView->getChartTransform().map(getMiddleOfPointedSector());
        showHint(m_pCurPointedSector.m_pItem(), radialView->mapToGlobal(middle));
    } else {
        hidePanel();
    }
}

void RadialController::followHintOfKeys() {
    if (m_bPointedByKeys && m_pPanelController && m_pPanelController->getAttachedWindow())
        showHintOfKeys();
}

void RadialController::keysLeft() {
    if (m_bPointedByKeys)
        hidePanel();
}

void RadialController::showHint(TreeObject* item, const QPointF& atGlobalPoint) {
    if (!m_pPanelController)
        return;
    // A scan's ticks point too: they bring no panel up over another program.
    const bool inFront = QGuiApplication::applicationState() == Qt::ApplicationActive;
    if (!m_pHost || !m_pHost->getShowHint() || !inFront || (!item && !m_pHost->getForceShowHint())) {
        hidePanel();
        return;
    }
    // Its place first: where it was last seen the pointer may be by now.
    m_pPanelController->setFrameTopLeftPoint(atGlobalPoint);
    if (!item) {
        m_pPanelController->setPathText(
            QCoreApplication::translate("veltrano::RadialController", "No selected item"), QString(),
            std::nullopt, std::nullopt);
        return;
    }
    std::optional<HintText> hint;
    if (m_pRoot) {
        const auto lock = lockTree();
        hint = composeHint(*item, *m_pRoot, m_sentinels,
                           [this](std::string_view bytes) { return m_pHost->getDisplayText(bytes); });
    }
    if (hint)
        m_pPanelController->setPathText(hint->main, hint->size, hint->datePath, hint->sizeCaption);
    m_pPanelController->showPanel();
}

void RadialController::hidePanel() {
    if (m_pPanelController)
        m_pPanelController->hidePanel();
}

void RadialController::clickedonPathComponent(std::string_view path) {
    FolderSystemItem* folder = m_pRoot ? m_pRoot->getParent() : nullptr;
    while (folder && !(folder->isDir() && !folder->isPack() && folder->getFullPath() == path))
        folder = folder->getParent();
    if (folder)
        startDrillOutAnimation(folder);
}

} // namespace veltrano
