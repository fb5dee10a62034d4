// SPDX-License-Identifier: Apache-2.0
#include "CameraRegion.h"

#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/IKxDrawingTool.h>
#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_TL/IKxImage.h>

#include <algorithm>
#include <cmath>

using namespace KxApi;

namespace
{

/// One direction of a region: its offset and its size.
struct Axis
{
    Axis(GenApi::INodeMap& camera, const char* szOffset, const char* szSize)
        : pOffset(camera.GetNode(szOffset))
        , pSize(camera.GetNode(szSize))
    {
        if (!pOffset || !pSize)
            throw RUNTIME_EXCEPTION("the camera has no %s and %s", szOffset, szSize);
    }

    /// The offset first goes to its minimum, so that any size can be set.
    void SetFull() const
    {
        if (GenApi::IsWritable(pOffset))
            pOffset->SetValue(pOffset->GetMin());
        pSize->SetValue(pSize->GetMax());
    }

    void Set(int64_t nFirst, int64_t nEnd) const
    {
        const int64_t nOffsetStep = std::max<int64_t>(pOffset->GetInc(), 1);
        const int64_t nSizeStep = std::max<int64_t>(pSize->GetInc(), 1);
        SetFull();
        const int64_t nMax = pSize->GetMax();
        const int64_t nMin = pSize->GetMin();
        int64_t nOffset = nFirst / nOffsetStep * nOffsetStep;
        int64_t nSize = (nEnd - nOffset + nSizeStep - 1) / nSizeStep * nSizeStep;
        nSize = std::clamp(nSize, nMin, nMax);
        nOffset = std::min(nOffset, (nMax - nSize) / nOffsetStep * nOffsetStep);
        pSize->SetValue(nSize);
        pOffset->SetValue(std::clamp(nOffset, pOffset->GetMin(), pOffset->GetMax()));
    }

    GenApi::CIntegerPtr pOffset;
    GenApi::CIntegerPtr pSize;
};

QRect RegionOf(const Axis& x, const Axis& y)
{
    const auto value = [](const GenApi::CIntegerPtr& pNode) { return static_cast<int>(pNode->GetValue()); };
    return {value(x.pOffset), value(y.pOffset), value(x.pSize), value(y.pSize)};
}

} // namespace

std::optional<QRect> SelectedPixels(IKxImageDisplayWnd& window)
{
    const auto* const pDrawing = dynamic_cast<IKxDrawingMeasurements*>(window.GetIKxDrawingTool());
    if (!pDrawing || !window.HasImage())
        return {};
    const std::vector<CKxDrawingMeasurement> objects = pDrawing->GetMeasurements();
    const auto selected = std::find_if(objects.begin(), objects.end(), [](const CKxDrawingMeasurement& o) {
        return o.bSelected && o.eType == KxDrawingItemType_Rectangle && o.vecPoints.size() >= 2;
    });
    if (selected == objects.end())
        return {};
    const IKxImage& image = *window.GetRegisteredIKxImage();
    const auto dWidth = static_cast<double>(image.GetImageWidth());
    const auto dHeight = static_cast<double>(image.GetImageHeight());
    const auto& points = selected->vecPoints;
    const QRectF rect = QRectF(QPointF(points[0].dX * dWidth, points[0].dY * dHeight),
                               QPointF(points[1].dX * dWidth, points[1].dY * dHeight))
                            .normalized() &
                        QRectF(0, 0, dWidth, dHeight);
    const QRect pixels = rect.toAlignedRect();
    return pixels.isEmpty() ? std::optional<QRect>() : pixels;
}

QRect NarrowRegion(GenApi::INodeMap& camera, const QRect& part)
{
    const Axis x(camera, "OffsetX", "Width");
    const Axis y(camera, "OffsetY", "Height");
    const QRect wanted = part.translated(RegionOf(x, y).topLeft());
    x.Set(wanted.left(), wanted.left() + wanted.width());
    y.Set(wanted.top(), wanted.top() + wanted.height());
    return RegionOf(x, y);
}

QRect FullRegion(GenApi::INodeMap& camera)
{
    const Axis x(camera, "OffsetX", "Width");
    const Axis y(camera, "OffsetY", "Height");
    x.SetFull();
    y.SetFull();
    return RegionOf(x, y);
}
