#include "app/FolderPanel.h"

#include "app/DisplayText.h"
#include "app/FolderListModel.h"
#include "app/FolderPanelControls.h"
#include "app/TypedPath.h"
#include "appearance/CheckBox.h"
#include "appearance/Fonts.h"
#include "appearance/Painting.h"
#include "appearance/PushButton.h"
#include "tree/PathComponents.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QShortcut>
#include <QStandardItemModel>

#include <utility>

namespace veltrano {

namespace {

constexpr QSize kDefaultSize(640, 440);
constexpr QSize kMinimumSize(520, 340);
constexpr int kInset = 20;         // points, on all sides
constexpr int kGap = 12;           // points between the parts
constexpr int kRowHeight = 32;     // points, of the field and the buttons
constexpr int kPlacesWidth = 156;  // points
constexpr int kTurnGap = 6;        // points between the buttons that turn pages
constexpr int kButtonGap = 8;      // points
constexpr int kButtonWidth = 96;   // points
constexpr int kMessageHeight = 18; // points
constexpr int kNoticeDelay = 300;  // milliseconds before something slow is told of
constexpr int kPlacePathRole = Qt::UserRole + 1;

/// A folder of the home folder that has a place of its own if it is there.
struct HomePlace {
    const char* name;
    const char* image;
};
constexpr HomePlace kHomePlaces[] = {{"Desktop", "extra/folder"},
                                     {"Documents", "extra/folder"},
                                     {"Downloads", "extra/folder-downloads"},
                                     {"Pictures", "extra/folder-pictures"},
                                     {"Videos", "extra/folder"}};

std::string pathOfPlace(const QModelIndex& place) {
    return place.data(kPlacePathRole).toByteArray().toStdString();
}

void addPlace(QStandardItemModel& places, const QString& text, const std::string& path,
              const QString& image) {
    auto* const row = new QStandardItem(text);
    row->setData(image, kRowImageRole);
    row->setData(QByteArray::fromStdString(path), kPlacePathRole);
    places.appendRow(row);
}

QRect withMargin(const QRect& plate, int margin) {
    return plate.adjusted(-margin, -margin, margin, margin);
}

} // namespace

FolderPanel::FolderPanel(std::shared_ptr<FileCatalogue> catalogue, std::string homeFolder, QWidget* parent)
    : QDialog(parent), m_pCatalogue(std::move(catalogue)), m_homeFolder(std::move(homeFolder)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Select folder to scan"));
    setMinimumSize(kMinimumSize);
    createControls();
    createPlaces();
    resize(kDefaultSize);

    for (QTimer* const timer : {&m_readingNotice, &m_lookingNotice}) {
        timer->setSingleShot(true);
        timer->setInterval(kNoticeDelay);
    }
    connect(&m_readingNotice, &QTimer::timeout, this, [this] { m_pList->setNotice(tr("Reading…")); });
    connect(&m_lookingNotice, &QTimer::timeout, this, [this] { showMessage(tr("Looking for the folder…")); });
}

FolderPanel::~FolderPanel() = default;

void FolderPanel::createControls() {
    m_pField = new PathField(this);
    m_pField->setAccessibleName(tr("Folder path"));
    connect(m_pField, &QLineEdit::textEdited, this, [this] {
        m_bEdited = true;
        m_looking.abandon();
        m_lookingNotice.stop();
        showMessage({});
    });
    connect(m_pField, &PathField::leftByTab, this, [this] {
        if (m_bEdited)
            lookForTyped(&FolderPanel::enter);
    });

    m_pFolders = new FolderListModel(this);
    m_pList = new FolderListView(tokens::kCard, this);
    m_pList->setModel(m_pFolders);
    m_pList->setAccessibleName(tr("Folders"));
    connect(m_pList, &FolderListView::rowOpened, this, [this](const QModelIndex& row) {
        enter(pathOfChild(m_history[m_nShown], m_pFolders->nameOfRow(row.row())));
    });
    // Whoever turns to a row has done with what was typed.
    connect(m_pList->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (m_bEdited && m_pList->selectionModel()->hasSelection())
            showPath();
    });

    m_pPlaceRows = new QStandardItemModel(this);
    m_pPlaces = new FolderListView(tokens::kSidebar, this);
    m_pPlaces->setModel(m_pPlaceRows);
    m_pPlaces->setQuietSelection(true);
    m_pPlaces->setAccessibleName(tr("Places"));
    connect(m_pPlaces, &FolderListView::rowOpened, this,
            [this](const QModelIndex& place) { enter(pathOfPlace(place)); });
    connect(m_pPlaces, &FolderListView::focusLeft, this, &FolderPanel::markPlace);
    connect(m_pPlaces, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& place) { enter(pathOfPlace(place)); });

    m_pMessage = new QLabel(this);
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setFont(interfaceFont(kMessageHeight - 6));
    QPalette calm = m_pMessage->palette();
    calm.setColor(QPalette::WindowText, tokens::kStopText);
    m_pMessage->setPalette(calm);
    m_pMessage->hide();

    m_pHidden = new CheckBox(this);
    m_pHidden->setText(tr("Show hidden folders"));
    m_pHidden->setToolTip(tr("Ctrl+H"));
    connect(m_pHidden, &QCheckBox::toggled, this, [this](bool shown) {
        const std::string name = selectedName();
        m_pFolders->setHiddenShown(shown);
        selectRow(name);
        updateNotice();
    });
    connect(new QShortcut(Qt::CTRL | Qt::Key_H, this), &QShortcut::activated, m_pHidden, &QCheckBox::toggle);

    m_pCancel = new PushButton(this);
    m_pCancel->setText(tr("Cancel"));
    connect(m_pCancel, &PushButton::clicked, this, &QDialog::reject);
    m_pSelect = new PushButton(this);
    m_pSelect->setKind(PushButton::Kind::Primary);
    m_pSelect->setText(tr("Select"));
    connect(m_pSelect, &PushButton::clicked, this, &FolderPanel::choose);

    m_pBack = createTurnButton(tr("Back"), QStringLiteral("extra/prev"), Qt::ALT | Qt::Key_Left,
                               &FolderPanel::goBack);
    m_pForward = createTurnButton(tr("Forward"), QStringLiteral("extra/next"), Qt::ALT | Qt::Key_Right,
                                  &FolderPanel::goForward);
    m_pUp = createTurnButton(tr("Enclosing folder"), QStringLiteral("extra/up"), Qt::ALT | Qt::Key_Up,
                             &FolderPanel::goUp);
    for (QWidget* const list : {m_pList, m_pPlaces}) {
        auto* const up = new QShortcut(Qt::Key_Backspace, list);
        up->setContext(Qt::WidgetShortcut);
        connect(up, &QShortcut::activated, this, &FolderPanel::goUp);
    }

    QWidget* const order[] = {m_pField, m_pList, m_pPlaces, m_pHidden, m_pCancel, m_pSelect};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    m_pField->setFocus();
}

PushButton* FolderPanel::createTurnButton(const QString& name, const QString& glyph, const QKeySequence& keys,
                                          void (FolderPanel::*turn)()) {
    auto* const button = new PushButton(this);
    button->setGlyph(glyph);
    button->setAccessibleName(name);
    button->setToolTip(tr("%1 (%2)").arg(name, keys.toString(QKeySequence::NativeText)));
    button->setFocusPolicy(Qt::NoFocus); // Its keys reach it from everywhere.
    connect(button, &PushButton::clicked, this, turn);
    connect(new QShortcut(keys, this), &QShortcut::activated, this, turn);
    return button;
}

void FolderPanel::createPlaces() {
    addPlace(*m_pPlaceRows, tr("Home"), m_homeFolder, QStringLiteral("extra/folder-home"));
    addPlace(*m_pPlaceRows, tr("Computer"), "/", QStringLiteral("extra/volume-internal"));
    // Without an answer the other places stay away.
    static_cast<void>(m_placesQuestion.ask(
        [this, catalogue = m_pCatalogue, home = m_homeFolder](BlockingQuestion::Channel& channel) {
            for (const HomePlace& place : kHomePlaces) {
                const std::string path = pathOfChild(home, place.name);
                if (channel.isAbandoned() || !isFolderAtPath(*catalogue, path))
                    continue;
                channel.answer([this, path, &place] {
                    addPlace(*m_pPlaceRows, QString::fromLatin1(place.name), path,
                             QString::fromLatin1(place.image));
                    markPlace();
                });
            }
        }));
}

void FolderPanel::openAt(const std::string& path) {
    m_history.clear();
    enter(path);
    m_pField->setFocus();
    m_pField->selectAll();
}

void FolderPanel::enter(const std::string& path) {
    if (!m_history.empty()) {
        if (path == m_history[m_nShown]) {
            showPath();
            return;
        }
        m_history.resize(m_nShown + 1);
    }
    m_history.push_back(path);
    m_nShown = m_history.size() - 1;
    showFolder();
}

void FolderPanel::goBack() {
    if (m_nShown == 0)
        return;
    --m_nShown;
    showFolder();
}

void FolderPanel::goForward() {
    if (m_nShown + 1 == m_history.size())
        return;
    ++m_nShown;
    showFolder();
}

void FolderPanel::goUp() {
    const std::string left = m_history[m_nShown];
    const std::string above = pathOfParent(left);
    if (above == left)
        return;
    enter(above);
    m_nameToMark = lastPathComponent(left);
}

void FolderPanel::showFolder() {
    const std::string& path = m_history[m_nShown];
    m_nameToMark.clear();
    m_readStatus.reset();
    showPath();
    markPlace();
    m_pBack->setEnabled(m_nShown > 0);
    m_pForward->setEnabled(m_nShown + 1 < m_history.size());
    m_pUp->setEnabled(path != "/");
    m_pFolders->setFolders({});
    m_pList->setNotice({});
    m_readingNotice.start();
    const bool isAsked =
        m_reading.ask([this, catalogue = m_pCatalogue, path](BlockingQuestion::Channel& channel) {
            listSubfolders(
                *catalogue, path, [&channel] { return channel.isAbandoned(); },
                [this, &channel](FolderListing listing) {
                    channel.answer([this, listing = std::move(listing)] { showListing(listing); });
                });
        });
    if (!isAsked)
        showListing({CatalogueStatus::Denied, {}, true});
}

void FolderPanel::showListing(const FolderListing& listing) {
    const std::string selected = selectedName();
    m_pFolders->setFolders(listing.folders);
    selectRow(selected);
    if (const QModelIndex marked = m_pFolders->index(m_pFolders->rowOfName(m_nameToMark));
        marked.isValid() && selected.empty()) {
        m_pList->selectionModel()->setCurrentIndex(marked, QItemSelectionModel::NoUpdate);
        m_pList->scrollTo(marked);
    }
    if (listing.isComplete)
        m_readStatus = listing.status;
    updateNotice();
}

void FolderPanel::updateNotice() {
    const bool isEmpty = m_pFolders->rowCount() == 0;
    if (isEmpty && !m_readStatus)
        return; // The timer tells of the reading.
    m_readingNotice.stop();
    if (!isEmpty)
        m_pList->setNotice({});
    else if (m_readStatus == CatalogueStatus::Denied)
        m_pList->setNotice(tr("This folder may not be read"));
    else if (m_readStatus == CatalogueStatus::Gone)
        m_pList->setNotice(tr("This folder is gone"));
    else
        m_pList->setNotice(tr("No folders here"));
    if (!isEmpty && m_readStatus == CatalogueStatus::Denied)
        showMessage(tr("Not all of this folder could be read."));
}

void FolderPanel::showPath() {
    m_bEdited = false;
    m_looking.abandon();
    m_lookingNotice.stop();
    showMessage({});
    m_pField->setText(displayText(m_history[m_nShown]));
}

void FolderPanel::showMessage(const QString& message) {
    m_pMessage->setText(message);
    m_pMessage->setVisible(!message.isEmpty());
    layOut();
}

void FolderPanel::markPlace() {
    m_pPlaces->clearSelection();
    for (int row = 0; row < m_pPlaceRows->rowCount(); ++row) {
        const QModelIndex place = m_pPlaceRows->index(row, 0);
        if (pathOfPlace(place) == m_history[m_nShown])
            m_pPlaces->setCurrentIndex(place);
    }
}

void FolderPanel::selectRow(const std::string& name) {
    const QModelIndex index = m_pFolders->index(m_pFolders->rowOfName(name));
    if (index.isValid())
        m_pList->setCurrentIndex(index);
}

std::string FolderPanel::selectedName() const {
    const QModelIndexList selected = m_pList->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? std::string() : m_pFolders->nameOfRow(selected.first().row());
}

void FolderPanel::choose() {
    if (m_bEdited)
        lookForTyped(&FolderPanel::finish);
    else
        finish(pathOfChild(m_history[m_nShown], selectedName()));
}

void FolderPanel::lookForTyped(Take take) {
    const std::string path =
        pathFromTyped(m_pField->text().toUtf8().toStdString(), m_history[m_nShown], m_homeFolder);
    m_lookingNotice.start();
    const bool isAsked =
        m_looking.ask([this, catalogue = m_pCatalogue, path, take](BlockingQuestion::Channel& channel) {
            const bool isFolder = isFolderAtPath(*catalogue, path);
            channel.answer([this, path, isFolder, take] { takeTyped(path, isFolder, take); });
        });
    if (!isAsked)
        takeTyped(path, false, take);
}

void FolderPanel::takeTyped(const std::string& path, bool isFolder, Take take) {
    m_lookingNotice.stop();
    if (isFolder)
        (this->*take)(path);
    else
        showMessage(tr("There is no folder at this path."));
}

void FolderPanel::finish(const std::string& path) {
    // What follows the choice may open a sheet of its own, so this one is closed first.
    QDialog::accept();
    emit folderChosen(QByteArray::fromStdString(path));
}

void FolderPanel::done(int result) {
    m_reading.abandon();
    m_looking.abandon();
    m_placesQuestion.abandon();
    QDialog::done(result);
}

void FolderPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        choose();
    else
        QDialog::keyPressEvent(event);
}

void FolderPanel::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layOut();
}

void FolderPanel::layOut() {
    const int right = width() - kInset;
    int left = kInset;
    const int turnWidth = (kPlacesWidth - 2 * kTurnGap) / 3;
    for (PushButton* const button : {m_pBack, m_pForward, m_pUp}) {
        button->setPlateGeometry(QRect(left, kInset, turnWidth, kRowHeight));
        left += turnWidth + kTurnGap;
    }
    const int listLeft = kInset + kPlacesWidth + kGap;
    m_pField->setGeometry(
        withMargin(QRect(listLeft, kInset, right - listLeft, kRowHeight), PathField::kFocusMargin));

    int top = kInset + kRowHeight + kGap;
    const int buttonTop = height() - kInset - kRowHeight;
    const int bottom = buttonTop - kGap - kGap / 3;
    constexpr int margin = FolderListView::kFocusMargin;
    m_pPlaces->setGeometry(withMargin(QRect(kInset, top, kPlacesWidth, bottom - top), margin));
    if (!m_pMessage->isHidden()) {
        m_pMessage->setGeometry(listLeft + 1, top - kGap / 2, right - listLeft, kMessageHeight);
        top += kMessageHeight;
    }
    m_pList->setGeometry(withMargin(QRect(listLeft, top, right - listLeft, bottom - top), margin));

    const QSize box = m_pHidden->sizeHint();
    m_pHidden->setGeometry(kInset - CheckBox::kFocusMargin, buttonTop + (kRowHeight - box.height()) / 2,
                           box.width(), box.height());
    m_pSelect->setPlateGeometry(QRect(right - kButtonWidth, buttonTop, kButtonWidth, kRowHeight));
    m_pCancel->setPlateGeometry(
        QRect(right - 2 * kButtonWidth - kButtonGap, buttonTop, kButtonWidth, kRowHeight));
}

void FolderPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSheetGround(painter, rect());
}

} // namespace veltrano
