// SPDX-License-Identifier: Apache-2.0
// What all shapes have in common.
#pragma once

#include "drawing/IKxDrawingItem_qt.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>

#include <QRectF>

namespace KxApi
{

/// How many points a shape has.
enum class EPointCount
{
    Exactly, ///< others are cut off
    AtLeast, ///< others are kept
};

/// The constants of a shape.
struct CShapeTraits
{
    _EKxDrawingItemType_t eType;
    size_t nPoints;
    EPointCount ePointCount;
    unsigned int nEnabledText; ///< masks of _EKxDisplayText_t: what a new object shows
    unsigned int nAvailableText;
    size_t nDragCountToAdd;
    bool bHasCorner;
    size_t nPointsToPaint; ///< with fewer points, which features can bring about, it shows nothing
};

/// A shape over the points of its container. Painting runs through here: figure, outline, labels; a shape
/// adds its own of each.
class CKxDrawingItemBase : public IKxDrawingItem
{
public:
    void OnDraw(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam,
                IKxDrawingToolForDrawing* pTool) override;
    void DrawSign(QPainter* pPainter, const _KxOnDrawParamForDrawing_t* pParam) override;
    uint32_t OnLButtonDown(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                           const _KxOnDrawParamForDrawing_t* pParam,
                           const _KxDrawByMouseParam_t* pStep) override;
    uint32_t OnMouseMove(void* pTool, QMouseEvent* pEvent, CKxPointEx point,
                         const _KxOnDrawParamForDrawing_t* pParam,
                         const _KxDrawByMouseParam_t* pStep) override;
    uint32_t OnLButtonUp(void*, QMouseEvent*, CKxPointEx, const _KxOnDrawParamForDrawing_t*,
                         const _KxDrawByMouseParam_t*) override
    {
        return PointsChanged_None;
    }
    uint32_t OnRButtonDown(void*, QMouseEvent*, CKxPointEx, const _KxOnDrawParamForDrawing_t*,
                           const _KxDrawByMouseParam_t*) override
    {
        return PointsChanged_None;
    }
    uint32_t OnRButtonUp(void*, QMouseEvent*, CKxPointEx, const _KxOnDrawParamForDrawing_t*,
                         const _KxDrawByMouseParam_t*) override
    {
        return PointsChanged_None;
    }
    size_t GetDragCountToAdd() const override { return m_traits.nDragCountToAdd; }
    _EKxDisplayText_t GetAvailableDisplayText() const override
    {
        return static_cast<_EKxDisplayText_t>(m_traits.nAvailableText);
    }
    _EKxDisplayText_t GetEnableDisplayText() const override { return m_eEnabledText; }
    void SetEnableDisplayText(_EKxDisplayText_t eText) override { m_eEnabledText = eText; }
    _EKxDrawingItemType_t GetType() const override { return m_traits.eType; }
    bool HasCorner() const override { return m_traits.bHasCorner; }
    bool HitTestContent(CKxPointEx, const _KxOnDrawParamForDrawing_t*) override { return false; }
    void Measure(const _KxOnDrawParamForDrawing_t& param, const IKxDrawingToolForDrawing& tool,
                 CKxDrawingMeasurement& measurement) const override;

protected:
    /// Brings the container's points to their number. @param traits outlives the shape.
    CKxDrawingItemBase(IKxDrawingItemParent* pParent, const CShapeTraits& traits);

    /// A step of the mouse as shapes look at it.
    struct CStep
    {
        CDoublePoint ptMouse; ///< image fraction
        size_t nClickIndex;   ///< of building
        size_t nPoint;        ///< the dragged one
        uint32_t nHitCode;    ///< what is dragged
        bool bLeftAlone;      ///< no button but the left one is down
        const _KxOnDrawParamForDrawing_t& param;
    };
    /// The shape's own steps; return a mask of EPointsChanged. Unless overridden, a dragged point follows the
    /// mouse.
    virtual uint32_t BeginBuildStep(const CStep& step) = 0;
    virtual uint32_t BuildStep(const CStep& step) = 0;
    virtual uint32_t DragStep(const CStep& step);

    /// What is measured with.
    struct CRuler
    {
        const _KxOnDrawParamForDrawing_t& param;
        const IKxDrawingToolForDrawing& tool;
    };
    /// What is painted with. Distances of labels from their anchors are the pen's width.
    struct CPaint : CRuler
    {
        QPainter& painter;
    };
    virtual void PaintFigure(const CPaint& paint) = 0;
    /// The outline of a selected object.
    virtual void PaintControlOutline(const CPaint&) {}
    /// The labels that IsEnabled tells, in their order.
    virtual void PaintLabels(const CPaint& paint) = 0;
    /// What Measure does once there are points enough.
    virtual void MeasurePoints(const CRuler& ruler, CKxDrawingMeasurement& measurement) const = 0;

    /// Points in the spaces. There has to be such a point.
    CKxPointEx Window(size_t nPoint, const _KxOnDrawParamForDrawing_t& param) const
    {
        return ToWindow((*m_pPointList)[nPoint], param);
    }
    CDoublePoint Image(size_t nPoint, const _KxOnDrawParamForDrawing_t& param) const
    {
        return ToImagePixels((*m_pPointList)[nPoint], param);
    }
    /// Image pixels times the conversion of units.
    CDoublePoint Units(size_t nPoint, const CRuler& ruler) const;
    CDoublePointList UnitsOfAll(const CRuler& ruler) const;
    CDoublePointList& Points() const { return *m_pPointList; }
    bool HasPoints(size_t nCount) const { return m_pPointList->size() >= nCount; }

    /// Makes the other of points 0 and 1 level, upright or diagonal to the anchors, of which there may be one
    /// for x and one for y; shapes with corners become square.
    void CorrectPointByShift(size_t nAnchorX, size_t nAnchorY, const _KxOnDrawParamForDrawing_t* pParam);

    /// Paints a text with the corner of its box that the flags name on a point of window pixels.
    void drawText(QPainter& painter, double x, double y, Qt::Alignment eAlignment, const QString& strText,
                  QRectF* pBoundingRect = nullptr);
    void DrawValue(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment, const char* szFormat,
                   double dValue);
    void DrawPosition(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment, const CDoublePoint& ptImage);
    void DrawName(const CPaint& paint, CKxPointEx ptAnchor, int nAlignment);
    /// The name outside of point 0, away from point 1.
    void PaintNameAtFirstPoint(const CPaint& paint);

    bool IsEnabled(_EKxDisplayText_t eText) const { return (m_eEnabledText & eText) != 0; }
    int PenSize() const { return m_pParent->GetIKxPen().GetSize(); }
    IKxDrawingItemParent& Parent() const { return *m_pParent; }

private:
    IKxDrawingItemParent* const m_pParent;
    const CShapeTraits& m_traits;
    _EKxDisplayText_t m_eEnabledText;
    CDoublePointList* const m_pPointList; // of the container
};

/// Where a text lies from its anchor, as the given values tell it.
enum ELabelAlignment : int
{
    LabelRightBelow = Qt::AlignLeft | Qt::AlignTop,    // 0x21
    LabelLeftBelow = Qt::AlignRight | Qt::AlignTop,    // 0x22
    LabelRightAbove = Qt::AlignLeft | Qt::AlignBottom, // 0x41
    LabelLeftAbove = Qt::AlignRight | Qt::AlignBottom, // 0x42
    LabelMiddleBelow = Qt::AlignHCenter | Qt::AlignTop,
    LabelMiddleAbove = Qt::AlignHCenter | Qt::AlignBottom,
};

inline int LabelAlignment(bool bRight, bool bBelow)
{
    if (bBelow)
        return bRight ? LabelRightBelow : LabelLeftBelow;
    return bRight ? LabelRightAbove : LabelLeftAbove;
}

/// Which quadrant a second point lies in: 1 when it is right of the first, 2 more when it isn't above.
inline size_t QuadrantIndex(const CKxPointEx& pt0, const CKxPointEx& pt1)
{
    return (pt0.x < pt1.x ? 1U : 0U) + (pt0.y > pt1.y ? 0U : 2U);
}

/// Where a name lies outside of a first point, by the quadrant of the second one.
inline constexpr int kNameAlignments[] = {LabelRightBelow, LabelLeftBelow, LabelRightAbove, LabelLeftAbove};

/// The pen's width away from the side that a label lies on.
inline int OffsetX(int nAlignment, int nDistance)
{
    return (nAlignment & Qt::AlignRight) != 0 ? -nDistance : nDistance;
}
inline int OffsetY(int nAlignment, int nDistance)
{
    return (nAlignment & Qt::AlignBottom) != 0 ? -nDistance : nDistance;
}

/// Length along points, from each to the next.
double LengthOfPath(const CDoublePointList& vecPoints);

} // namespace KxApi
