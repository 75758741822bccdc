// The cells of the sidebar: where things lie in them, what they ask and how they look.

#include "appearance/Colours.h"
#include "appearance/Fonts.h"
#include "appearance/GroupDescCell.h"
#include "appearance/GroupTitleCell.h"
#include "appearance/ImageTextCell.h"
#include "appearance/Images.h"
#include "appearance/RowCells.h"
#include "appearance/TextDescCell.h"
#include "appearance/Tokens.h"
#include "tree/VolumeItemGrop.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace veltrano {
namespace {

constexpr QRectF kFrame(100, 200, 174, 60);

/// A source that says the same of every element.
class FixedSource final : public TableItemProtocol {
public:
    std::int32_t ocuppPercentageForCell(const TableCell&, const CellData&) const override {
        return percentage;
    }
    bool isOperatingItem(const TableCell&, const CellData&) const override { return false; }
    std::int32_t progressForCell(const TableCell&, const CellData&) const override { return 0; }
    std::optional<QString> primaryTextForCell(const TableCell&, const CellData&) const override {
        return first;
    }
    std::optional<QString> secondaryTextForCell(const TableCell&, const CellData&) const override {
        return second;
    }
    std::optional<QString> mainTextForCell(const TableCell&, const CellData&) const override { return first; }
    std::optional<QString> descTextForCell(const TableCell&, const CellData&) const override {
        return second;
    }
    QPixmap iconForCell(const TableCell&, const CellData&) const override { return icon; }

    std::optional<QString> first;
    std::optional<QString> second;
    QPixmap icon;
    std::int32_t percentage = 0;
};

/// The cell drawn in a frame, on a ground.
QImage drawn(TableCell& cell, QSize size, QColor ground = Qt::transparent) {
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(ground);
    QPainter painter(&picture);
    cell.drawWithFrame(painter, QRectF(QPointF(0, 0), QSizeF(size)));
    return picture;
}

/// The smallest rectangle around everything that is drawn.
QRect inkOf(const QImage& picture) {
    QRect ink;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            if (qAlpha(picture.pixel(column, row)) > 60)
                ink |= QRect(column, row, 1, 1);
    return ink;
}

int pixelsOf(const QImage& picture, const QColor& colour) {
    int count = 0;
    for (int row = 0; row < picture.height(); ++row)
        for (int column = 0; column < picture.width(); ++column)
            count += picture.pixelColor(column, row) == colour;
    return count;
}

class TableCells : public testing::Test {
protected:
    ~TableCells() override { Colours::sharedColours().setSelectedCellDrawing(false); }
    FixedSource source;
    ImageTextCell volumeCell;
    TextDescCell folderCell;
    GroupDescCell groupCell;
};

TEST_F(TableCells, rectanglesOfTheVolumeCellLieAtTheirPlaces) {
    EXPECT_EQ(ImageTextCell::buttonRectForBounds(kFrame), QRectF(160, 200, 68, 16));
    EXPECT_EQ(ImageTextCell::getPrimTextDrawRect(kFrame), QRectF(112, 202, 162, 19));
    EXPECT_EQ(ImageTextCell::getSecTextDrawRect(kFrame), QRectF(112, 221, 162, 19));
    EXPECT_EQ(ImageTextCell::sgpRectForBounds(kFrame), QRectF(110, 236, 150, 12));
    EXPECT_EQ(ImageTextCell::progressRectForBounds(kFrame), QRectF(110, 232, 238, 4));
}

TEST_F(TableCells, rectanglesOfTheFolderCellLieAtTheirPlaces) {
    EXPECT_EQ(TextDescCell::getMainTextDrawRect(kFrame, false), QRectF(110, 204, 162, 19));
    EXPECT_EQ(TextDescCell::getMainTextDrawRect(kFrame, true), QRectF(110, 212, 162, 19));
    EXPECT_EQ(TextDescCell::getDescTextDrawRect(kFrame), QRectF(110, 222, 162, 19));
    EXPECT_EQ(TextDescCell::buttonRectForBounds(kFrame), QRectF(160, 200, 68, 16));
}

TEST_F(TableCells, rectanglesOfTheGroupCellLieAtTheirPlaces) {
    EXPECT_EQ(GroupDescCell::getMainTextDrawRect(kFrame), QRectF(110, 202, 238, 19));
    EXPECT_EQ(GroupDescCell::getDescTextDrawRect(kFrame), QRectF(110, 222, 238, 19));
    EXPECT_EQ(GroupDescCell::getLineDrawRect(kFrame), QRectF(112, 201, 150, 2));
    EXPECT_EQ(GroupDescCell::getSeparatorDrawRect(kFrame, {190, 210}, 24), QRectF(198, 232, 158, 2));
}

TEST_F(TableCells, cellWithoutASourceReadsItsKeyPaths) {
    const auto nameOf = [](const CellData& data) -> std::optional<QString> {
        const auto* const text = std::get_if<QString>(&data);
        return text ? std::optional(*text) : std::nullopt;
    };
    EXPECT_TRUE(inkOf(drawn(folderCell, {174, 39})).isEmpty());
    folderCell.setMainTextKeyPath(nameOf);
    folderCell.setObjectValue(QStringLiteral("mara"));
    EXPECT_FALSE(inkOf(drawn(folderCell, {174, 39})).isEmpty());

    volumeCell.setObjectValue(QStringLiteral("System"));
    const QRect bar(10, 36, 150, 12);
    EXPECT_TRUE(bar.contains(inkOf(drawn(volumeCell, {174, 60}))));
    volumeCell.setPrimaryTextKeyPath(nameOf);
    EXPECT_FALSE(bar.contains(inkOf(drawn(volumeCell, {174, 60}))));
    EXPECT_EQ(volumeCell.dataDelegate().primaryTextForCell(volumeCell, volumeCell.objectValue()),
              QStringLiteral("System"));
}

TEST_F(TableCells, sourceIsAskedBeforeTheKeyPaths) {
    volumeCell.setPrimaryTextKeyPath([](const CellData&) { return QStringLiteral("own"); });
    EXPECT_EQ(volumeCell.dataDelegate().primaryTextForCell(volumeCell, {}), QStringLiteral("own"));
    volumeCell.setDataDelegate(&source);
    EXPECT_EQ(&volumeCell.dataDelegate(), &source);
    EXPECT_EQ(volumeCell.dataDelegate().primaryTextForCell(volumeCell, {}), std::nullopt);
}

TEST_F(TableCells, textsStayInTheirRectangles) {
    source.first = QString(80, QLatin1Char('M'));
    volumeCell.setDataDelegate(&source);
    const QRect ink = inkOf(drawn(volumeCell, {400, 34}));
    EXPECT_GE(ink.left(), 12);
    EXPECT_GE(ink.top(), 2);
    EXPECT_LE(ink.right(), 12 + 162);
    EXPECT_GT(ink.right(), 12 + 130); // cut off, not left out
    EXPECT_LT(ink.bottom(), 2 + 19);

    source.first.reset();
    source.second = QString(80, QLatin1Char('M'));
    const QRect below = inkOf(drawn(volumeCell, {400, 36}));
    EXPECT_GE(below.top(), 21);
    EXPECT_LE(below.right(), 12 + 162);
}

TEST_F(TableCells, lineBreaksOfANameDoNotMakeASecondLine) {
    source.first = QStringLiteral("one\ntwo");
    folderCell.setDataDelegate(&source);
    EXPECT_LT(inkOf(drawn(folderCell, {174, 60})).bottom(), 12 + 19);
}

TEST_F(TableCells, folderNameStandsLowerWhereItStandsAlone) {
    source.first = QStringLiteral("mara");
    folderCell.setDataDelegate(&source);
    const int alone = inkOf(drawn(folderCell, {174, 39})).top();
    source.second = QString();
    EXPECT_EQ(inkOf(drawn(folderCell, {174, 39})).top(), alone);
    source.second = QStringLiteral("Size: 1 KB");
    const QRect both = inkOf(drawn(folderCell, {174, 39}));
    EXPECT_EQ(both.top(), alone - 8);
    EXPECT_GT(both.bottom(), 22);
}

TEST_F(TableCells, textIsWhiteOnTheSelectedRowAndGreyOnOthers) {
    source.first = QStringLiteral("mara");
    folderCell.setDataDelegate(&source);
    EXPECT_GT(pixelsOf(drawn(folderCell, {174, 39}, Qt::cyan), QColor(51, 51, 51)), 5);
    Colours::sharedColours().setSelectedCellDrawing(true);
    EXPECT_GT(pixelsOf(drawn(folderCell, {174, 39}, Qt::blue), Qt::white), 5);
}

TEST_F(TableCells, barShowsTheSourcesPercentage) {
    volumeCell.setDataDelegate(&source);
    const auto litAt = [&](int column) {
        const QColor colour = drawn(volumeCell, {174, 60}).pixelColor(column, 42);
        return colour.blue() - colour.red() > 60;
    };
    source.percentage = 5000;
    EXPECT_TRUE(litAt(10 + 72));
    EXPECT_FALSE(litAt(10 + 74));
    source.percentage = -1;
    EXPECT_FALSE(litAt(12));
    source.percentage = 10000;
    EXPECT_TRUE(litAt(10 + 147));
}

TEST_F(TableCells, iconOfTheSourceIsDrawnUpright) {
    QPixmap icon(4, 4);
    icon.fill(Qt::red);
    {
        QPainter painter(&icon);
        painter.fillRect(0, 0, 4, 2, Qt::green);
    }
    source.icon = icon;
    volumeCell.setDataDelegate(&source);
    const QImage picture = drawn(volumeCell, {174, 60});
    EXPECT_EQ(picture.pixelColor(1, 0), QColor(Qt::green));
    EXPECT_EQ(picture.pixelColor(1, 3), QColor(Qt::red));
}

TEST_F(TableCells, titleOfTheFirstGroupStandsInTheMiddleAlone) {
    EXPECT_EQ(GroupDescCell::getImageDrawRect({0, 0, 270, 26}, {246, 18}, true), QRectF(12, 4, 246, 18));
    VolumeItemGrop group{.bFirstItem = true, .groupName = "Hard Disks", .groupImage = "pvttitleDisks"};
    groupCell.setObjectValue(&group);
    const QRect ink = inkOf(drawn(groupCell, {270, 26}));
    EXPECT_GE(ink.top(), 4);
    EXPECT_GE(ink.left(), 12);
}

TEST_F(TableCells, titleOfALaterGroupStandsSixLowerUnderALine) {
    EXPECT_EQ(GroupDescCell::getImageDrawRect({0, 0, 270, 42}, {246, 18}, false), QRectF(12, 18, 246, 18));
    VolumeItemGrop group{.groupName = "Hard Disks", .groupImage = "pvttitleDisks"};
    groupCell.setObjectValue(&group);
    const QImage picture = drawn(groupCell, {270, 42}, tokens::kSidebar.top);
    const auto isLine = [&](int column, int row) {
        return picture.pixelColor(column, row).lightness() < tokens::kSidebar.top.lightness() - 30;
    };
    EXPECT_TRUE(isLine(12, 1));
    EXPECT_TRUE(isLine(257, 1));
    EXPECT_FALSE(isLine(11, 1));
    EXPECT_FALSE(isLine(258, 1));
    EXPECT_FALSE(isLine(100, 0));
    EXPECT_GT(picture.pixelColor(100, 2).lightness(), tokens::kSidebar.top.lightness() + 5);
    EXPECT_EQ(picture.pixelColor(100, 3), tokens::kSidebar.top);
}

TEST_F(TableCells, lineComesOutThreeTimesAsStrong) {
    VolumeItemGrop group;
    groupCell.setObjectValue(&group);
    const QImage picture = drawn(groupCell, {270, 42});
    const int once = qAlpha(image(QStringLiteral("lf-sep-cent"), 1).toImage().pixel(1, 0));
    const double left = 1 - once / 255.0;
    EXPECT_NEAR(qAlpha(picture.pixel(100, 1)), 255 * (1 - left * left * left), 3);
}

TEST_F(TableCells, imageThatIsNoGroupStandsUnderALineToo) {
    QPixmap title(40, 10);
    title.fill(Qt::red);
    groupCell.setObjectValue(title);
    const QImage picture = drawn(groupCell, {270, 42});
    EXPECT_EQ(picture.pixelColor(115, 22), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(115, 21).alpha(), 0);
    EXPECT_GT(picture.pixelColor(12, 1).alpha(), 0);
}

TEST_F(TableCells, imageStandsOnWholePoints) {
    EXPECT_EQ(GroupDescCell::getImageDrawRect({0, 0, 269, 25}, {40, 10}, true).topLeft(), QPointF(114, 7));
    EXPECT_EQ(IconCell::getIconDrawRect({0, 0, 55, 39}, {32, 32}).topLeft(), QPointF(11, 3));
}

TEST_F(TableCells, textOfAGroupIsEmbossed) {
    groupCell.setObjectValue(QStringLiteral("HHHHH"));
    const QImage picture = drawn(groupCell, {270, 42}, Qt::gray);
    // To the right of each dark stroke the light shows, to its left the ground.
    EXPECT_GT(pixelsOf(picture, tokens::kHeading), 10);
    EXPECT_GT(pixelsOf(picture, Qt::white), 10);
    int firstDark = picture.width();
    int firstLight = picture.width();
    for (int column = 0; column < picture.width(); ++column) {
        const QColor colour = picture.pixelColor(column, 20);
        if (colour.lightness() < 100)
            firstDark = std::min(firstDark, column);
        if (colour.lightness() > 220)
            firstLight = std::min(firstLight, column);
    }
    EXPECT_GE(firstDark, 89);
    EXPECT_LT(firstDark, 95);
    EXPECT_GT(firstLight, firstDark);
}

TEST_F(TableCells, headingColourIsThatOfTheDesign) {
    EXPECT_EQ(tokens::kHeading.rgb(), QColor::fromRgbF(0.173F, 0.251F, 0.396F).rgb());
}

TEST_F(TableCells, groupTextThatEndsInABlankStandsSixHigher) {
    const double plain = GroupDescCell::getTextTop(kFrame, QStringLiteral("Disks"), 24);
    EXPECT_EQ(plain, 218);
    EXPECT_EQ(GroupDescCell::getTextTop(kFrame, QStringLiteral("Disks "), 24), plain - 6);
}

TEST_F(TableCells, groupCellWithoutAnElementDrawsNothing) {
    EXPECT_TRUE(inkOf(drawn(groupCell, {270, 42})).isEmpty());
    groupCell.setObjectValue(static_cast<const VolumeItemGrop*>(nullptr));
    EXPECT_TRUE(inkOf(drawn(groupCell, {270, 42})).isEmpty());
}

TEST_F(TableCells, plainGroupTitleIsWhiteOverBlack) {
    GroupTitleCell cell;
    cell.setText(QStringLiteral("HHHHH"));
    EXPECT_EQ(cell.text(), QStringLiteral("HHHHH"));
    const QImage picture = drawn(cell, {270, 26}, Qt::gray);
    EXPECT_GT(pixelsOf(picture, Qt::white), 5);
    EXPECT_GT(pixelsOf(picture, Qt::black), 2);
    EXPECT_GE(inkOf(drawn(cell, {270, 26})).left(), 9);
}

TEST_F(TableCells, iconStandsInTheMiddleAtItsOwnSize) {
    EXPECT_EQ(IconCell::getIconDrawRect({0, 33, 56, 60}, {44, 44}), QRectF(6, 41, 44, 44));
    EXPECT_EQ(IconCell::getIconDrawRect({0, 0, 56, 39}, {32, 32}), QRectF(12, 3, 32, 32));
}

TEST_F(TableCells, buttonIsTwentySixWideInTheMiddleOfThePlate) {
    EXPECT_EQ(RowButtonCell::getButtonDrawRect({230, 0, 32, 39}), QRectF(233, 6, 26, 26));
    EXPECT_EQ(RowButtonCell::getButtonDrawRect({230, 95, 32, 60}, 3), QRectF(233, 110, 26, 26));
}

TEST_F(TableCells, buttonLooksDifferentPointedPressedAndDisabled) {
    RowButtonCell button(QStringLiteral("extra/row-scan"));
    const QImage normal = drawn(button, {40, 40}, Qt::gray);
    button.setState(true, false);
    const QImage pointed = drawn(button, {40, 40}, Qt::gray);
    button.setState(true, true);
    const QImage pressed = drawn(button, {40, 40}, Qt::gray);
    EXPECT_NE(pointed, normal);
    EXPECT_NE(pressed, normal);
    EXPECT_NE(pressed, pointed);
    button.setEnabled(false);
    const QImage disabled = drawn(button, {40, 40}, Qt::gray);
    button.setState(false, false);
    EXPECT_EQ(drawn(button, {40, 40}, Qt::gray), disabled); // The pointer does nothing to it.
    // White at 40 percent over the ground.
    const int ground = QColor(Qt::gray).red();
    EXPECT_NEAR(disabled.pixelColor(20, 10).red(), ground + 0.4 * (255 - ground), 3);
}

TEST_F(TableCells, emptyCellDrawsNothing) {
    EmptyCell cell;
    EXPECT_TRUE(inkOf(drawn(cell, {32, 60})).isEmpty());
}

TEST(CellFonts, areThoseOfTheInterface) {
    EXPECT_EQ(VTFontWithSize(14), interfaceFont(14));
    EXPECT_EQ(VTFontWithSize(11).families().first(), QStringLiteral("Lucida Grande"));
    EXPECT_EQ(VTBoldFontWithSize(20), interfaceFont(20, QFont::Bold));
}

TEST(CellFonts, textIsPreparedWithoutColouredSmoothing) {
    QImage picture(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setFont(VTFontWithSize(14));
    prepareCurrentContextForTextDraw(painter);
    EXPECT_TRUE(painter.font().styleStrategy() & QFont::NoSubpixelAntialias);
    EXPECT_EQ(painter.font().pixelSize(), 14);
}

} // namespace
} // namespace veltrano
