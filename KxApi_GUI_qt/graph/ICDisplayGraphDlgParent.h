// SPDX-License-Identifier: Apache-2.0
// The graph window as its dialog and its widget see it.
#pragma once

#include "frame/IDlgParent.h"
#include "frame/IKxWndInside.h"
#include "graph/CDrawGraphParam.h"

#include <KxApi_GUI/IKxGraphDisplayWnd.h>

class QPainter;

namespace KxApi
{

/// Who looks at the window's data. Each has the list that it took last, whatever comes in the meantime.
enum EKxGraphDataIndex_t : size_t
{
    KxGraphDataIndex_Widget = 0, ///< the widget's paint and the status text
    KxGraphDataIndex_Draw = 1,
    KxGraphDataIndex_GetIKxImage = 2,
    KxGraphDataIndex_Save = 3, ///< new data may take the place of what is being saved
};

/// The window with all of its settings.
struct IKxGraphDisplayWndInside : IKxGraphDisplayWnd, IKxWndReleasable, virtual IKxWndInside
{
protected:
    ~IKxGraphDisplayWndInside() = default;
};

/// The window as the dialog holds it. Called in the GUI thread.
struct ICDisplayGraphDlgParent : virtual IDlgParent
{
    virtual IKxGraphDisplayWndInside* GetIKxGraphDisplayWndInside() = 0;

    /// Scroll bars moved or have a new range.
    virtual void OnScrollPosOrRangeChanged() = 0;
    /// What the scroll bars show, and up to where they go.
    virtual void OnScrollState(int nH, int nHMax, int nV, int nVMax) = 0;

    virtual void GetCDrawGraphParam(CDrawGraphParam& param) const = 0;
    /// Takes the newest data for `eIndex` and paints them with ground, scales and frame.
    virtual void DrawInside(QPainter* pPainter, CDrawGraphParam& param, EKxGraphDataIndex_t eIndex) = 0;
    /// Whether what was shown before shines through.
    virtual bool isTranslucent() = 0;
    /// The data of `eIndex`, which belong to the window; with bUpdate it takes the newest first.
    virtual const IKxGraphDataBufferList* GetGraphData(EKxGraphDataIndex_t eIndex, bool bUpdate) = 0;

protected:
    ~ICDisplayGraphDlgParent() = default;
};

} // namespace KxApi
