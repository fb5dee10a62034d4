// SPDX-License-Identifier: Apache-2.0
// A drawing kept as a picture while nothing of it changes.
#pragma once

#include "drawing/DrawingCoordinates_qt.h"

#include <QImage>
#include <QRect>
#include <QTransform>
#include <cstdint>
#include <functional>

class QPainter;

namespace KxApi
{

/// Over a live image the same drawing is painted again and again. From its second time on it is kept as a
/// picture of the painter's own pixels, so that painting it costs one pass over the screen, whatever it
/// shows. The pixels are those that painting it anew would yield, up to rounding where smooth texts lie over
/// each other. Under the lock of the tool.
class CDrawingLayer
{
public:
    /// @param nState another number after each change of the drawing. @param paint paints it.
    void Paint(QPainter& painter, uint64_t nState, const _KxOnDrawParamForDrawing_t& param,
               const std::function<void(QPainter&)>& paint);

    /// Gives the picture's memory back.
    void Clear() { *this = CDrawingLayer(); }

private:
    struct CKey
    {
        uint64_t nState = 0;
        _KxOnDrawParamForDrawing_t param;
        QTransform toDevice;
        QRect rcDevice; ///< the picture's place among the device's pixels

        bool operator==(const CKey& other) const;
    };

    CKey m_key;
    QImage m_picture; // null until the same is painted for the second time
};

} // namespace KxApi
