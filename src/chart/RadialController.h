#pragma once

#include "chart/AnimController.h"
#include "chart/ChartTarget.h"
#include "chart/DrillFrames.h"
#include "chart/SectorColours.h"
#include "chart/SectorItem.h"
#include "chart/SectorText.h"
#include "chart/geometry/DrillGeometry.h"
#include "chart/geometry/RingLayout.h"
#include "chart/geometry/SectorHit.h"
#include "chart/geometry/SectorOutline.h"
#include "tree/FolderSystemItem.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

class QMouseEvent;
class QPainter;

namespace veltrano {

class AnimView;
class ChartBackdrop;
class ChartHost;
class ChartMenu;
class PanelController;
class RDAnimation;
class RadialView;

/// How an entry of a menu is to look.
struct MenuItemState {
    bool bEnabled = true;
    bool bCheckable = false;
    bool bChecked = false;
    bool bShown = true;
};

/// Where the keyboard moves the pointed sector.
enum class SectorMove {
    Previous, ///< The sibling before, counter-clockwise; from the first to the last.
    Next,     ///< The sibling behind, clockwise; from the last to the first.
    Outwards, ///< The first sector on the ring above it.
    Inwards,  ///< The folder that it lies in.
};

/// The chart: lays out the root's tree as rings, paints it, tells what a point hits, and keeps what is
/// pointed and selected. Owned by the ChartArea, which also owns the views that it draws into; main thread.
/// Positions are points of the chart view with y upwards; angles are fractions of a turn, clockwise. The
/// files: Root, Layout, Painting, Labels, Outlines, Pointer, Clicks, Drag, Keys, Selection, Menus, Access,
/// Drill, DrillPainting and FreeSector.
class RadialController {
public:
    /// `mainLoop` tells the time and outlives this.
    explicit RadialController(MainLoop& mainLoop);
    RadialController(const RadialController&) = delete;
    RadialController& operator=(const RadialController&) = delete;
    ~RadialController();

    /// Who is asked and told about the window around the chart; null for nobody. Must be reset before it
    /// goes.
    void setHost(ChartHost* host) { m_pHost = host; }
    /// The three views, borrowed; ChartArea sets them once.
    void setView(RadialView* view);
    void setAnimView(AnimView* overlay) { animView = overlay; }
    void setBackdrop(ChartBackdrop* backdrop) { bgPanel = backdrop; }
    /// The hover panel, borrowed; null for none. Must be reset before it goes.
    void setPanelController(PanelController* panel) { m_pPanelController = panel; }
    /// The view's size has changed.
    void viewFrameChanged();

    // Root.

    /// Shows another root, or none. Without `setAnyway` the present root changes nothing. A drill or a change
    /// of the free sector that runs is dropped where it is, since it was about the root that goes. The tree
    /// of a tree item is kept while it is the root; a sidebar entry is not: whoever drops it takes it from
    /// here first.
    void setRoot(VolumeFolderProtocol* root, bool setAnyway, bool withRedraw);
    void setRoot(VolumeFolderProtocol* root) { setRoot(root, false, true); }
    VolumeFolderProtocol* getRootObject() const { return m_pRoot; }
    /// Computes everything anew that depends on the root.
    void ReinitRootParams();
    /// A volume is gone: if it is the root, the chart is empty.
    void volumeWasRemoved(std::string_view path);
    /// Whether the present root is the one under scan.
    bool isSelectedScanningRoot() const;
    /// Shows what a scan has found so far. `root` is the root of the scan; another root on show is left
    /// alone.
    void UpdateRadialStructureDuringProcessByRoot(FolderSystemItem* root);

    // Layout.

    /// Centre, radius and ring count for a view with these bounds.
    void initRadialParameters(const QRectF& bounds);
    /// Computes the ring count. The flag has no effect.
    void initCountOfSublevels(bool flag);
    const RingLayout& getLayout() const { return m_layout; }
    bool CanDrawItem(TreeObject* item, int withSubLevel) const;
    /// The rectangle around the sector of an item or a sentinel; empty for a ring that is not shown.
    QRectF getBoundsOfItem(TreeObject* item, int withSubLevel, double withStartAngleK) const;
    /// Where a folder root lies on its volume's own circle: start and share; 0 and 1 for a top root.
    float getOriginAnglek() const { return m_fOriginAnglek; }
    float getKoeffAngle() const { return m_fKoeffAngle; }
    bool isDrawFreeSector() const { return m_bDrawFreeSector; }
    /// Share of the turn that is occupied; 1.0 unless the free part is shown.
    double getFullRatio() const { return m_dFullRatio; }

    // Painting. The painter has y upwards.

    /// Paints the chart; nothing without a root.
    void DrawRadialSructure(QPainter& painter, const QRectF& dirtyRect);
    /// Paint the outlines of the pointed and the selected sectors; whether there was one.
    bool DrawFocusItem(QPainter& painter) const;
    bool DrawSelectedItem(QPainter& painter) const;
    /// The rectangle in which the two paint; empty for none.
    QRectF getOutlinesBounds() const;
    void setNeedsDisplayRadialViewandSelection();
    void updateRadialView();
    /// Shows the outlines as they are now.
    void updateSelection();

    // Pointer and selection.

    /// What a point hits; see SectorHit.h for the result places.
    TreeObject* getItemByPoint(const QPointF& point, int* withResSubLevel, double* withResSkAngle);
    /// Points at what lies under a point; whether that is news. `withDrawRect` takes the area to repaint; it
    /// may be null, and stays as it is when nothing has changed.
    bool OperateMousePoint(const QPointF& point, QRectF* withDrawRect);
    /// The same with the sounds, which tell by ear whether a click would drill.
    bool OperateMouseMoveByPoint(const QPointF& point, QRectF* withDrawRect);
    /// The pointer has moved to a point.
    void operateMouseMoveFromRadialView(const QPointF& point);
    /// The pointer has left the view.
    void mouseExited();
    /// The left button. A drag takes the file that it began on, or turns the chart if it began on none; the
    /// release after one is no click. Whether the press or the drag was taken.
    bool LMouseDown(const QPointF& point, const QMouseEvent& withEvent);
    bool LMouseDragged(const QPointF& point, const QMouseEvent& withEvent);
    /// Whether the view is to look again at what the pointer is on.
    bool LMouseClick(const QPointF& point, const QMouseEvent& withEvent);
    /// Whether a click on it leads somewhere: a volume, or a folder that is no package. Null does not.
    static bool isItemClickable(TreeObject* item);
    const SectorItem& getCurPointedSector() const { return m_pCurPointedSector; }
    const std::vector<SectorItem>& getSelectedSectors() const { return m_pSelectedSectors; }
    /// Outline one item or several, for tables. Null, a root and items without parent are passed over.
    void selectItem(FileSystemItem* item);
    void selectItems(std::span<FileSystemItem* const> items);
    /// Points at an item, for hover on a table row; null points at nothing.
    void setHiliteOnRadial(FileSystemItem* item);
    /// Ring and start of an item below the present root. An item that is not below it leaves the sector
    /// empty.
    void fillSectorItem(SectorItem& sector, FileSystemItem* byFileItem) const;
    /// Computes ring and start of every selected sector anew.
    void recacSelItemsParameters();
    void cleanSelectedItems() { m_pSelectedSectors.clear(); }
    const SectorSentinels& getSentinels() const { return m_sentinels; }

    // Labels.

    /// Paints name and size of an item upright into a disc of that radius around the centre; nothing for an
    /// item without a name. The caller holds the tree's lock.
    void DrawRootLabel(QPainter& painter, const VolumeFolderProtocol& item, float withAlpha,
                       double withRadius) const;
    /// Tells in the hover panel what the pointer is on: an item, a sentinel, or null for nothing.
    void ShowToolTipforItem(TreeObject* item);
    void hidePanel();
    /// Goes up to the folder above the root with this path, bytes; nothing if there is none.
    void clickedonPathComponent(std::string_view path);

    // Keyboard. What it points at stays pointed through a scan, until the pointer moves, and the hover panel
    // stands beside it as long as the view has the focus.

    /// Moves from the pointed sector, or to the disc if none is pointed at.
    void movePointedSector(SectorMove move);
    /// Points at a sector, as the keyboard does.
    void pointAtSector(TreeObject* item, int ring, double start);
    /// What a click on the pointed sector does.
    void clickPointedSector();
    /// Goes to the folder above the root; nothing at a top root.
    void drillOneLevelUp();
    /// Goes to the top of the root's tree; nothing at a top root and while an animation runs.
    void drillToTop();
    /// The view has lost the focus.
    void keysLeft();
    /// The middle of the pointed sector, or of the chart.
    QPointF getMiddleOfPointedSector() const;

    // For assistive programs.

    /// Names the disc, then every sector that is shown, in the order of drawing.
    void
    visitSectors(const std::function<void(TreeObject&, int ring, double start, double share)>& visit) const;
    /// An object of the present chart in words. `share` is a fraction of the turn.
    SectorText describe(TreeObject& object, double share) const;

    // Files. The clipboard and drags carry bytes; see PathsMimeData.h.

    /// The path of whatever a sector stands for, bytes; a part of a volume gives the root's, an item that is
    /// no file its folder's.
    std::optional<std::string> getFullPathForObject(TreeObject* object) const;
    /// What a drag from a point would carry. False where there is nothing to drag; the places then stay as
    /// they are. Only what can be removed is a file of its own below the root.
    bool getDragFileInfoByPoint(const QPointF& point, std::string* toFilePath, bool* isRemovable,
                                QRectF* fromRect);
    /// Starts a drag of the file that the press at a point took hold of, once for a press; whether it held
    /// one. It is the file of that moment, whatever a scan has put there since. Returns when the drag is
    /// over.
    bool dragFromDiagramByPoint(const QPointF& point, const QMouseEvent& withEvent);
    /// Show the item, or what is known of it, in the file manager; null stands for the pointed, else the
    /// first selected item.
    void openFileItemInFinder(TreeObject* item);
    void openItemInfoInFinder(TreeObject* item);

    // Actions of the menus, for what is pointed at and selected now.

    void revealInFinder() { performMenuAction(ChartAction::RevealInFinder, getTarget()); }
    void getInformation() { performMenuAction(ChartAction::GetInformation, getTarget()); }
    void copy() { performMenuAction(ChartAction::Copy, getTarget()); }
    void addToFavorite() { performMenuAction(ChartAction::AddToFavorite, getTarget()); }
    void showDiskStructure() { performMenuAction(ChartAction::ShowDiskStructure, getTarget()); }

    /// The menu for a point, ready to be shown and owned by the view; null for none. Points at what lies
    /// there.
    ChartMenu* getContextMenuByPoint(const QPointF& point);
    /// The menu for the pointed sector, or for the disc if none is pointed at.
    ChartMenu* getContextMenuForPointedSector();
    MenuItemState validateMenuItem(ChartAction action, const ChartTarget& target) const;
    void performMenuAction(ChartAction action, const ChartTarget& target);
    /// What the actions would work on now.
    ChartTarget getTarget() const;
    /// The folder that would become a favourite, or null.
    FolderSystemItem* getItemForAddToFavorite() const;

    // Drill, and the free sector. An animation holds off the pointer while it runs.

    /// Whether an animation of the chart runs.
    bool isRDAnimating() const { return m_RDAnimation != nullptr; }
    /// Ends the running animation at once, as if its time was over.
    void releaseRDAnimation();
    bool isDrillAnimating() const { return m_drill.m_nDrillAnimating != kDrillNone; }
    /// A folder below the root becomes the root within a second. `withSubLevel` is its ring, from 1, and
    /// `withSkAngle` its start, fraction of a turn. At once where one of the two has no size, or where the
    /// desktop wants no motion.
    void startDrillInAnimation(FolderSystemItem* folder, int withSubLevel, double withSkAngle);
    /// A folder above the root becomes the root, the same way back.
    void startDrillOutAnimation(FolderSystemItem* ancestor);
    /// Shows or hides the free part of the volume, within a second.
    void setDrawFreeSector();
    void changetoDrawFreeSector() { setDrawFreeSector(); }

    // A scan's pulse and its rings.

    void StartAnimation();
    void StopAnimation();
    void SuspendAnimation();
    void ResumeAnimation();
    void hideSelectionDuringLiveResize();
    void showSelectionAfterLiveResize();
    /// Fades the plate behind the chart away for a scan, or back in.
    void showPanelsForScanning(bool show);

private:
    /// Whether pointing at another sector may be heard.
    enum class PointSounds { Heard, Silent };

    /// What a press has taken hold of.
    struct DragFile {
        std::string text; // bytes
        bool isPath;      // the text is the path of a real file
        bool isRemovable; // where it is dropped, it may be taken away from here
        bool isFolder;
    };

    /// How sectors are filled; the line around them is always smooth.
    enum class SectorEdges { Smooth, Rough };

    /// Told by its address alone.
    class Sentinel final : public TreeObject {};

    /// A sector that waits to be drawn.
    struct GatheredSector {
        SectorPath outline;
        std::int16_t colorFlag;
        std::uint8_t timeCode;
    };

    [[nodiscard]] std::unique_lock<std::recursive_mutex> lockTree() const;
    void changeRoot(VolumeFolderProtocol* root, bool withRedraw);
    void initColorParameters();
    void pointAtMouse(PointSounds sounds);
    void showHint(TreeObject* item, const QPointF& atGlobalPoint);
    void showHintOfKeys();
    void followHintOfKeys();
    void playSoundOf(TreeObject* item) const;
    void announceRoot();
    void announceGrowth();
    bool clickItem(TreeObject* item, int ring, double start);
    bool clickRoot();
    std::optional<DragFile> getDragFileByPoint(const QPointF& point);
    void rotateBy(const QPointF& from, const QPointF& to);
    std::optional<std::string> getTextToCopy() const;
    TreeObject* getPointedOrSelected() const;
    ChartMenu* prepareMenu();

    // Steps that keep their place in the order of painting and paint nothing: the chart has no ground, frame,
    // foreground or shadow of its own, and what stands behind the view shows through its gaps.
    void DrawBackground(QPainter& painter, const QRectF& bounds) const { DrawPlaneBG(painter, bounds); }
    void DrawPlaneBG(QPainter& /*painter*/, const QRectF& /*bounds*/) const {}
    void DrawForeground(QPainter& /*painter*/) const {}
    void DrawCircleFrame(QPainter& /*painter*/) const {}
    void DrawRootShadow(QPainter& /*painter*/, const QPainterPath& /*disc*/) const {}

    void DrawStructure(QPainter& painter, const QRectF& dirtyRect, bool scanning);
    void DrawChildrenOf(VolumeFolderProtocol& root, const InheritedFlags& inherited);
    bool DrawItemWithSubLevel(int ring, double withStartAngleK, double withDeltaAngleK,
                              std::int16_t withColorFlag, std::uint8_t withTimeCode);
    void DrawGathered(QPainter& painter, const QRectF& dirtyRect, bool scanning,
                      SectorEdges edges = SectorEdges::Smooth);
    bool DrawGatheredInStrips(QPainter& painter,
                              const std::function<void(QPainter&, const GatheredSector&)>& draw) const;
    void DrawSector(QPainter& painter, const SectorPath& path, std::int16_t withColorFlag,
                    std::uint8_t withTimeCode, float withAlpha, bool scanning, SectorEdges edges) const;
    void DrawNotScannedSectors();
    void DrawRoot(QPainter& painter, bool scanning) const;
    void DrawRootLabel(QPainter& painter) const;
    std::optional<SectorPath> getFocusOutline() const;
    std::vector<SectorPath> getSelectedOutlines() const;

    void startAnimation(void (RadialController::*updateValue)(float), void (RadialController::*stop)());
    void dropAnimation();
    void showAnimationFrame();
    void initDrillSubLevels();
    void setDrillingRoot(FolderSystemItem* root);
    void updateDrillAnimationValue(float value);
    void stopDrillAnimation();
    void drawDrillAnimation(QPainter& painter, const QRectF& dirtyRect);
    void DrawOuterChart(QPainter& painter, const QRectF& dirtyRect, float alpha, bool scanning);
    void DrawDrillingChildrenOf(FolderSystemItem& folder);
    bool DrawDrillingItem(const DrillFrames::Child& child);
    void DrawDrillingRoot(QPainter& painter);
    SectorEdges getDrillingEdges() const;
    void gatherDrillingChildren(FolderSystemItem& folder);
    void updateFreeSectorAnimationValue(float value);
    void stopFreeSectorAnimation();

    // Owned, constant.
    const std::unique_ptr<Sentinel> m_pOccupSector;
    const std::unique_ptr<Sentinel> m_pFreeSector;
    const SectorSentinels m_sentinels;

    // Borrowed; the ChartArea owns the views.
    MainLoop& m_mainLoop;
    ChartHost* m_pHost = nullptr;
    RadialView* radialView = nullptr;
    AnimView* animView = nullptr;
    ChartBackdrop* bgPanel = nullptr;
    PanelController* m_pPanelController = nullptr;

    // The root and its place.
    VolumeFolderProtocol* m_pRoot = nullptr;
    std::shared_ptr<TreeStorage> m_pRootTree; // keeps the root's tree; null for an entry
    RingLayout m_layout;
    double m_dFullRatio = 1.0;
    bool m_bDrawFreeSector = false;
    float m_fOriginAnglek = 0; // fraction of a turn
    float m_fKoeffAngle = 1;   // fraction of a turn

    // Painting.
    float m_fDrawAlpha = 1.0f;
    std::vector<GatheredSector> m_gathered; // kept between paints for its room
    bool m_bPointedMoved = false;           // the paint has moved the pointed sector

    // Pointer.
    QPointF mPrevMouse;                    // the last place of a press or a turning drag
    bool m_bWasDragging = false;           // a drag happened since the press
    std::optional<DragFile> m_pressedFile; // until the drag or the release
    bool m_bPointedByKeys = false;
    double m_dLastAnnouncement = 0; // seconds of the main loop
    // Children of the view, made when first wanted.
    ChartMenu* m_pFolderContextMenu = nullptr;
    ChartMenu* m_pVolumeContextMenu = nullptr;
    ChartMenu* m_pVolumeRootContextMenu = nullptr;
    SectorItem m_pCurPointedSector;
    std::vector<SectorItem> m_pSelectedSectors;

    // Drill and free sector. The outer layout of the drill is renewed for each frame.
    std::shared_ptr<RDAnimation> m_RDAnimation;
    DrillMotion m_drill;
    FolderSystemItem* m_pDrillingRoot = nullptr;  // the inner chart's root
    std::shared_ptr<TreeStorage> m_pDrillingTree; // keeps its tree
    DrillFrames m_drillFrames;

    // A scan's pulse and its rings.
    AnimController m_pAnimController;
    bool m_bIsAnimating = false; // a scan's pulse is wanted
};

} // namespace veltrano
