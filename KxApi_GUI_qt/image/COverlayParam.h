// SPDX-License-Identifier: Apache-2.0
// What painting hands to overlays.
#pragma once

#include <KxApi_GUI/IKxOverlayCanvas.h>
#include <KxApi_GUI/IKxWndCallback.h>
#include <KxSDKCommon/KxCallbackManager.h>

#include <functional>

class QPainter;
class QPointF;
class QRectF;

namespace KxApi
{

/// The parameter of the drawing event. Lives on the stack of the paint.
class COverlayParam final : public CKxCallbackParamBase<IKxCallbackParamKxApiGUIEventDrawing>,
                            public IKxOverlayCanvas
{
public:
    /// What is painted, where, and with what; the sizes as the interface tells them.
    struct CValues
    {
        IKxWnd* pIKxWnd = nullptr;
        IKxImage* pIKxImage = nullptr;
        IKxImage* pRegisteredIKxImage = nullptr;
        int nROIOffsetX = 0;
        int nROIOffsetY = 0;
        int nROIWidth = 0;
        int nROIHeight = 0;
        int nDisplayWidth = 0;
        int nDisplayHeight = 0;
        void* pDC = nullptr;
    };

    explicit COverlayParam(const CValues& values) noexcept
        : CKxCallbackParamBase(KxGUICallbackType_Drawing)
        , m_values(values)
    {}

    IKxWnd* GetIKxWnd() const override { return m_values.pIKxWnd; }
    IKxImage* GetIKxImage() const override { return m_values.pIKxImage; }
    int GetROIOffsetX() const override { return m_values.nROIOffsetX; }
    int GetROIOffsetY() const override { return m_values.nROIOffsetY; }
    int GetROIWidth() const override { return m_values.nROIWidth; }
    int GetROIHeight() const override { return m_values.nROIHeight; }
    int GetDisplayWidth() const override { return m_values.nDisplayWidth; }
    int GetDisplayHeight() const override { return m_values.nDisplayHeight; }
    void* GetDC() const override { return m_values.pDC; }

    void SetPen(uint32_t nColor, double dWidth) override;
    void DrawLine(double dX0, double dY0, double dX1, double dY1) override;
    void DrawRectangle(double dX, double dY, double dWidth, double dHeight) override;
    void DrawEllipse(double dX, double dY, double dWidth, double dHeight) override;
    void DrawText(double dX, double dY, const GenICam::gcstring& strText, uint32_t nHeight) override;
    IKxImage* GetRegisteredIKxImage() const override { return m_values.pRegisteredIKxImage; }

private:
    /// Runs a function with the pen set, and leaves the painter as it was.
    void Painted(const std::function<void(QPainter&)>& paint);
    QPointF OnDisplay(double dX, double dY) const;
    QRectF OnDisplay(double dX, double dY, double dWidth, double dHeight) const;

    const CValues m_values;
    uint32_t m_nColor = KxOverlayColor(255, 255, 255);
    double m_dPenWidth = 1; // of the screen
};

} // namespace KxApi
