#include "app/MainWindow.h"

#include "app/FolderPanel.h"
#include "app/PathControl.h"
#include "app/ProgressBlock.h"
#include "app/WindowPanels.h"
#include "appearance/CCTableView.h"
#include "appearance/Fonts.h"
#include "appearance/Images.h"
#include "appearance/PathElementCell.h"
#include "appearance/PushButton.h"
#include "appearance/Tokens.h"
#include "chart/ChartArea.h"

#include <QAction>
#include <QLabel>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace veltrano {

namespace {

constexpr QSize kDefaultSize(1180, 760);
constexpr QSize kMinimumSize(960, 600);
constexpr QSizeF kGroundStrip(64, 1600);        // of the window's ground, cut from the top
constexpr QColor kGroundFoot(0xE3, 0xEA, 0xF2); // where the ground ends, and below
constexpr int kHeaderHeight = 52;
constexpr int kFooterHeight = 44;  // of the window; the footer itself is a point higher
constexpr int kSidebarWidth = 270; // with its hairline
constexpr int kCentreLeft = 284;   // where the header's centre and its progress begin
constexpr int kLegendLeft = 290;
constexpr int kCentreMargin = 14;              // from the header's centre to the right column
constexpr int kPathTop = 12;                   // in the header
constexpr int kPathMargin = 12;                // from the path's right end to the right column
constexpr int kHalvesGap = 16;                 // between path and progress
constexpr QRect kScanPlate(12, 10, 146, 32);   // in the header
constexpr QRect kFolderPlate(166, 10, 92, 32); // in the header
constexpr int kResizeRest = 150;               // milliseconds without a new size that end a live resize

} // namespace

MainWindow::MainWindow(MainLoop& mainLoop, std::shared_ptr<FileCatalogue> catalogue, std::string homeFolder)
    : m_pCatalogue(std::move(catalogue)), m_homeFolder(std::move(homeFolder)), m_lastFolder(m_homeFolder) {
    setWindowTitle(QStringLiteral("Veltrano"));
    setMinimumSize(kMinimumSize);
    createMenus();
    createRegions(mainLoop);
    m_resizeEnd.setSingleShot(true);
    m_resizeEnd.setInterval(kResizeRest);
    connect(&m_resizeEnd, &QTimer::timeout, this, &MainWindow::liveResizeEnded);
    resize(startSize(screen()->availableSize()));
    setScanning(false);
    setProgressShown(false);
}

QSize MainWindow::startSize(const QSize& available) {
    return kDefaultSize.boundedTo(available).expandedTo(kMinimumSize);
}

CCTableView& MainWindow::sidebarTable() {
    return m_pSidebar->table();
}

PushButton& MainWindow::removeEntryButton() {
    return m_pFooter->removeEntryButton();
}

void MainWindow::createRegions(MainLoop& mainLoop) {
    auto* const body = new QWidget(this);
    setCentralWidget(body);

    m_pHeader = new HeaderBand(body);
    m_pScanButton = new PushButton(m_pHeader);
    m_pScanButton->setPlateGeometry(kScanPlate);
    connect(m_pScanButton, &PushButton::clicked, this, &MainWindow::scanToggled);
    m_pFolderButton = new PushButton(m_pHeader);
    m_pFolderButton->setText(tr("Folder…"));
    m_pFolderButton->setAccessibleName(tr("Select folder to scan"));
    m_pFolderButton->setToolTip(tr("Select folder to scan"));
    m_pFolderButton->setGlyph(QStringLiteral("extra/scan-folder"));
    m_pFolderButton->setPlateGeometry(kFolderPlate);
    connect(m_pFolderButton, &PushButton::clicked, this, &MainWindow::folderPanelRequested);
    mPathControl = new PathControl(m_homeFolder, m_pHeader);
    connect(mPathControl, &PathControl::pathComponentClicked, this, &MainWindow::pathComponentClicked);
    m_pProgress = new ProgressBlock(mainLoop, m_pHeader);

    m_pSidebar = new SidebarPanel(body);
    m_pSidebar->table().setFocus(); // so that the arrow keys choose an entry from the start on
    m_pChartArea = new ChartArea(mainLoop, body);
    m_pStartHint = new QLabel(tr("Select a folder to see what fills it"), m_pChartArea);
    m_pStartHint->setAlignment(Qt::AlignCenter);
    m_pStartHint->setFont(interfaceFont(14));
    m_pStartHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette hintPalette = m_pStartHint->palette();
    hintPalette.setColor(QPalette::WindowText, tokens::kInk2);
    m_pStartHint->setPalette(hintPalette);
    m_pRightColumn = new RightColumn(body);
    m_pFooter = new FooterBand(body);
}

void MainWindow::layOutRegions() {
    const QSize body = centralWidget()->size();
    const int width = body.width();
    const int middle = body.height() - kHeaderHeight - kFooterHeight;
    const int chartWidth = width - kSidebarWidth - RightColumn::kWidth;
    m_pHeader->setGeometry(0, 0, width, kHeaderHeight);
    m_pSidebar->setGeometry(0, kHeaderHeight, kSidebarWidth, middle);
    m_pChartArea->setGeometry(kSidebarWidth, kHeaderHeight, chartWidth, middle);
    m_pStartHint->setGeometry(m_pChartArea->rect());
    m_pRightColumn->setGeometry(width - RightColumn::kWidth, kHeaderHeight, RightColumn::kWidth, middle);
    m_pFooter->setGeometry(0, body.height() - kFooterHeight, width, kFooterHeight + 1);
    const int centreRight = width - RightColumn::kWidth - kCentreMargin;
    m_pFooter->setLegendRange(kLegendLeft, centreRight);
    layOutHeader();
}

void MainWindow::layOutHeader() {
    // Path and progress share the header's centre: each alone takes all of it, both take half.
    const int rightColumn = m_pHeader->width() - RightColumn::kWidth;
    const int centreRight = rightColumn - kCentreMargin;
    const int half = (centreRight - kCentreLeft - kHalvesGap) / 2;
    const bool both = mPathControl->isVisibleTo(m_pHeader) && m_pProgress->isVisibleTo(m_pHeader);
    const int pathRight = both ? kCentreLeft + half : rightColumn - kPathMargin;
    mPathControl->setRoom(QRect(kCentreLeft, kPathTop, pathRight - kCentreLeft, PathElementCell::kHeight));
    const int progressLeft = both ? centreRight - half : kCentreLeft;
    m_pProgress->setGeometry(progressLeft, kScanPlate.top(), centreRight - progressLeft,
                             ProgressBlock::kHeight);
}

void MainWindow::setPathControlTextForItem(const VolumeFolderProtocol* item, const QString& rootTitle) {
    mPathControl->setPathControlTextForItem(item, rootTitle);
    layOutHeader();
}

void MainWindow::setCanScan(bool canScan) {
    m_bCanScan = canScan;
    setScanning(m_bScanning);
}

void MainWindow::setScanning(bool scanning) {
    m_bScanning = scanning;
    m_pScanButton->setKind(scanning ? PushButton::Kind::Stop : PushButton::Kind::Primary);
    m_pScanButton->setText(scanning ? tr("Stop Scanning") : tr("Scan Selected"));
    m_pScanButton->setGlyph(scanning ? QStringLiteral("extra/stop") : QStringLiteral("extra/scan"));
    m_pScanButton->setEnabled(scanning || m_bCanScan);
    m_pFolderButton->setEnabled(!scanning);
}

void MainWindow::setProgressShown(bool shown) {
    m_pProgress->setVisible(shown);
    layOutHeader();
}

void MainWindow::setStartHintShown(bool shown) {
    m_pStartHint->setVisible(shown);
}

void MainWindow::openFolderPanel() {
    auto* const panel = new FolderPanel(m_pCatalogue, m_homeFolder, this);
    connect(panel, &FolderPanel::folderChosen, this, [this](const QByteArray& path) {
        m_lastFolder = path.toStdString();
        emit folderChosen(path);
    });
    panel->openAt(m_lastFolder);
    panel->open();
}

void MainWindow::toggleFullScreen() {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void MainWindow::beginLiveResize() {
    if (!m_resizeEnd.isActive())
        emit liveResizeStarted();
    m_resizeEnd.start();
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) {
        const bool full = windowState().testFlag(Qt::WindowFullScreen);
        m_pFullScreenAction->setText(full ? tr("Exit &Full Screen") : tr("Enter &Full Screen"));
        beginLiveResize();
    }
    QMainWindow::changeEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    // What rests during a live resize must rest before the chart gets its new size.
    if (isVisible())
        beginLiveResize();
    QMainWindow::resizeEvent(event);
    layOutRegions();
}

void MainWindow::paintEvent(QPaintEvent*) {
    // The ground changes from top to bottom only, so a strip of it serves the whole width.
    const double ratio = devicePixelRatioF();
    if (m_ground.isNull() || m_ground.devicePixelRatio() != ratio)
        m_ground = renderImage(QStringLiteral("wndBack"), kGroundStrip, ratio);
    QPainter painter(this);
    const QRectF strip(0, 0, width(), std::min<double>(height(), kGroundStrip.height()));
    painter.drawTiledPixmap(strip, m_ground);
    painter.fillRect(QRectF(rect()).adjusted(0, strip.height(), 0, 0), kGroundFoot);
}

} // namespace veltrano
