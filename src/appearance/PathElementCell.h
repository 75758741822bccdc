#pragma once

#include <QAbstractButton>

namespace veltrano {

/// One component of a path control: an arrow that parts it from the one before, an icon and a name, on a
/// plate that runs through all cells. A press on it is a step up the path. Owned by its PathColntrolCell;
/// main thread.
class PathElementCell final : public QAbstractButton {
    Q_OBJECT

public:
    static constexpr int kHeight = 28; // points

    /// The icon is one of the program's images, 16 points wide when drawn; no name for no icon.
    PathElementCell(const QString& title, const QString& iconName, QWidget* parent);

    const QString& getIconName() const { return m_iconName; }

    /// Which ends of the plate the cell draws.
    void setPlace(bool isFirst, bool isLast);
    bool isFirstinView() const { return m_bFirst; }
    bool isLastinView() const { return m_bLast; }

    /// The width with the whole title, and without any; points.
    int getFullWidth() const;
    int getLeastWidth() const;

    QSize sizeHint() const override { return {getFullWidth(), kHeight}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int getTitleLeft() const;
    int getTitleRightMargin() const;

    QString m_iconName;
    bool m_bFirst = false;
    bool m_bLast = false;
    bool m_bFocusByKeyboard = false;
};

} // namespace veltrano
