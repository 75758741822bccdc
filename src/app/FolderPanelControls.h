#pragma once

#include "appearance/Tokens.h"

#include <QHash>
#include <QLineEdit>
#include <QListView>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace veltrano {

/// The role under which a row's model tells the name of the image before its text.
inline constexpr int kRowImageRole = Qt::UserRole;

/// The line for a path. Its rectangle holds a margin of kFocusMargin on every side for the focus ring. Lives
/// in the folder panel; main thread.
class PathField final : public QLineEdit {
    Q_OBJECT

public:
    static constexpr int kFocusMargin = 4; // points

    explicit PathField(QWidget* parent = nullptr);

signals:
    /// The keyboard went on to another control, forwards or backwards.
    void leftByTab();

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool m_bFocusByKeyboard = false;
};

/// Draws a row of a folder list: image and name, elided in the middle, on the plate of its state.
class FolderRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int kRowHeight = 26; // points

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QPixmap rowImage(const QString& name, double ratio) const;

    mutable QHash<QString, QPixmap> m_images; // drawn at the size of rows
};

/// A list of folders on a card. Without rows it shows a notice. Its rectangle holds a margin of kFocusMargin
/// around the card for the focus ring. Lives in the folder panel; main thread.
class FolderListView final : public QListView {
    Q_OBJECT

public:
    static constexpr int kFocusMargin = 4; // points

    explicit FolderListView(const tokens::Plate& card, QWidget* parent = nullptr);

    /// The words in the place of rows, empty for none.
    void setNotice(const QString& notice);
    const QString& notice() const { return m_notice; }

    /// A quiet selection takes the accent only while the list has the focus.
    void setQuietSelection(bool quiet) { m_bQuietSelection = quiet; }

    bool isSelectionAccented() const { return !m_bQuietSelection || hasFocus(); }
    bool isFocusedByKeyboard() const { return hasFocus() && m_bFocusByKeyboard; }

signals:
    /// Return was pressed on the row, or it was clicked twice.
    void rowOpened(const QModelIndex& index);
    void focusLeft();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void drawCard();

    tokens::Plate m_card;
    QString m_notice;
    bool m_bQuietSelection = false;
    bool m_bFocusByKeyboard = false;
};

} // namespace veltrano
