#include "app/PreferencesSheet.h"

#include "appearance/CheckBox.h"
#include "appearance/Fonts.h"
#include "appearance/Painting.h"
#include "appearance/PushButton.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace veltrano {

namespace {

constexpr QSize kSize(400, 286);
constexpr int kInset = 24;               // points, left and right
constexpr int kHeadingSize = 16;         // pixels
constexpr int kTextSize = 13;            // pixels
constexpr int kGroupSize = 12;           // pixels
constexpr int kHeadingHeight = 20;       // points
constexpr QRect kDone(288, 239, 88, 30); // the plate
// The middle of each line, in points from the top; boxes stand 26 apart.
constexpr int kTitleCentre = 31;
constexpr int kSoundsCentre = 66;
constexpr int kSoundBoxCentres[] = {90, 116};
constexpr int kHintsCentre = 154;
constexpr int kHintBoxCentres[] = {178, 204};

} // namespace

PreferencesSheet::PreferencesSheet(const SettingValues& values, QWidget* parent) : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(tr("Preferences"));
    setFixedSize(kSize);

    const QFont group = interfaceFont(kGroupSize, QFont::DemiBold);
    addHeading(tr("Preferences"), interfaceFont(kHeadingSize, QFont::DemiBold), tokens::kHeading,
               kTitleCentre);
    addHeading(tr("Sounds"), group, tokens::kInk2, kSoundsCentre);
    addBox(QStringLiteral("playSound"), tr("Play sounds while pointing at the chart"), values.m_bPlaySound,
           kSoundBoxCentres[0], &PreferencesSheet::actPlaySound);
    addBox(QStringLiteral("playFinishSound"), tr("Play a sound when a scan ends"), values.m_bPlayFinishSound,
           kSoundBoxCentres[1], &PreferencesSheet::actPlayFinishSound);
    addHeading(tr("Hints"), group, tokens::kInk2, kHintsCentre);
    addBox(QStringLiteral("showHint"), tr("Show the hint beside the pointer"), values.m_bShowHint,
           kHintBoxCentres[0], &PreferencesSheet::actShowHint);
    addBox(QStringLiteral("forceShowHint"), tr("Also when nothing is under the pointer"),
           values.m_bForceShowHint, kHintBoxCentres[1], &PreferencesSheet::actForceShowHint);
    addDone();
    connect(this, &QDialog::finished, this, &PreferencesSheet::closePreferences);
}

void PreferencesSheet::addHeading(const QString& text, const QFont& font, const QColor& colour, int centre) {
    auto* const label = new QLabel(text, this);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
    label->setGeometry(kInset, centre - kHeadingHeight / 2, kSize.width() - 2 * kInset, kHeadingHeight);
}

void PreferencesSheet::addBox(const QString& name, const QString& text, bool isOn, int centre,
                              Switched switched) {
    auto* const box = new CheckBox(this);
    box->setObjectName(name);
    box->setFont(interfaceFont(kTextSize));
    box->setText(text);
    box->setChecked(isOn);
    const QSize size = box->sizeHint();
    box->setGeometry(kInset - CheckBox::kFocusMargin, centre - size.height() / 2, size.width(),
                     size.height());
    connect(box, &QCheckBox::toggled, this, switched);
}

void PreferencesSheet::addDone() {
    m_pDone = new PushButton(this);
    m_pDone->setKind(PushButton::Kind::Primary);
    m_pDone->setText(tr("Done"));
    m_pDone->setPlateGeometry(kDone);
    m_pDone->setFocus();
    connect(m_pDone, &PushButton::clicked, this, &QDialog::accept);
}

bool PreferencesSheet::event(QEvent* event) {
    // The ring shows from the start what the Return key does; before the window is active no focus is told.
    if (event->type() == QEvent::WindowActivate && !m_bWasActive) {
        m_bWasActive = true;
        m_pDone->setFocus(Qt::ShortcutFocusReason);
    }
    return QDialog::event(event);
}

void PreferencesSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        accept();
    else
        QDialog::keyPressEvent(event);
}

void PreferencesSheet::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSheetGround(painter, rect());
}

} // namespace veltrano
