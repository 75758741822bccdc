#pragma once

#include "chart/AnimController.h"
#include "chart/SectorColours.h"
#include "chart/SectorItem.h"
#include "chart/geometry/RingLayout.h"
#include "chart/geometry/SectorHit.h"
#include "chart/geometry/SectorOutline.h"
#include "tree/FolderSystemItem.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

class QPainter;

namespace veltrano {

class AnimView;
class ChartBackdrop;
class ChartHost;
class RadialView;

/// The chart: lays out the root's tree as rings, paints it, tells what a point hits, and keeps what is
/// pointed and selected. Owned by the ChartArea, which also owns the views that it draws into; main thread.
/// Positions are points of the chart view with y upwards; angles are fractions of a turn, clockwise. The
/// files: Root, Layout, Painting, Outlines and Pointer.
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
    /// The view's size has changed.
    void viewFrameChanged();

    // Root.

    /// Shows another root, or none. Without `setAnyway` the present root changes nothing. The tree of a tree
    /// item is kept while it is the root; a sidebar entry is not: whoever drops it takes it from here first.
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

    // Pointer and selection.

    /// What a point hits; see SectorHit.h for the result places.
    TreeObject* getItemByPoint(const QPointF& point, int* withResSubLevel, double* withResSkAngle);
    /// Points at what lies under a point; whether that is news. `withDrawRect` takes the area to repaint; it
    /// may be null, and stays as it is when nothing has changed.
    bool OperateMousePoint(const QPointF& point, QRectF* withDrawRect);
    void operateMouseMoveFromRadialView(const QPointF& point);
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
    /// Told by its address alone.
    class Sentinel final : public TreeObject {};

    /// A sector that waits to be drawn.
    struct GatheredSector {
        SectorPath outline;
        std::int16_t colorFlag;
        std::uint8_t timeCode;
    };

    [[nodiscard]] std::unique_lock<std::recursive_mutex> lockTree() const;
    void initColorParameters();
    void pointAtMouse();

    // Steps that keep their place in the order of painting and paint nothing: the chart has no ground, frame,
    // foreground or shadow of its own, and what stands behind the view shows through its gaps.
    void DrawBackground(QPainter& painter, const QRectF& bounds) const { DrawPlaneBG(painter, bounds); }
    void DrawPlaneBG(QPainter& /*painter*/, const QRectF& /*bounds*/) const {}
    void DrawForeground(QPainter& /*painter*/) const {}
    void DrawCircleFrame(QPainter& /*painter*/) const {}
    void DrawRootShadow(QPainter& /*painter*/, const QPainterPath& /*disc*/) const {}

    void DrawChildrenOf(VolumeFolderProtocol& root, const InheritedFlags& inherited);
    bool DrawItemWithSubLevel(int ring, double withStartAngleK, double withDeltaAngleK,
                              std::int16_t withColorFlag, std::uint8_t withTimeCode);
    void DrawGathered(QPainter& painter, const QRectF& dirtyRect, bool scanning);
    void DrawSector(QPainter& painter, const SectorPath& path, std::int16_t withColorFlag,
                    std::uint8_t withTimeCode, float withAlpha, bool scanning) const;
    void DrawNotScannedSectors();
    void DrawRoot(QPainter& painter, bool scanning) const;
    void DrawRootLabel(QPainter& painter, bool scanning) const;
    std::optional<SectorPath> getFocusOutline() const;
    std::vector<SectorPath> getSelectedOutlines() const;

    // Owned, constant.
    const std::unique_ptr<Sentinel> m_pOccupSector;
    const std::unique_ptr<Sentinel> m_pFreeSector;
    const SectorSentinels m_sentinels;

    // Borrowed; the ChartArea owns the views.
    ChartHost* m_pHost = nullptr;
    RadialView* radialView = nullptr;
    AnimView* animView = nullptr;
    ChartBackdrop* bgPanel = nullptr;

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

    // Pointer and animation.
    SectorItem m_pCurPointedSector;
    std::vector<SectorItem> m_pSelectedSectors;
    AnimController m_pAnimController;
    bool m_bIsAnimating = false; // a scan's pulse is wanted
};

} // namespace veltrano
