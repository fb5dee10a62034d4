// SPDX-License-Identifier: Apache-2.0
// How measured values become texts.
#pragma once

#include "drawing/DrawingCoordinates_qt.h"

#include <Base/GCString.h>

namespace KxApi
{

/// Units as the user gave them and digits behind the point.
struct CValueTexts
{
    GenICam::gcstring strLengthUnit;
    GenICam::gcstring strAreaUnit;
    GenICam::gcstring strAngleUnit;
    unsigned int nLengthPrecision = 1;
    unsigned int nAreaPrecision = 1;
    unsigned int nAnglePrecision = 1;
    unsigned int nPositionPrecision = 1;
};

/// Writes the four formats; a percent sign of a unit stays one.
void BuildFormats(const CValueTexts& texts, _KxOnDrawParamForDrawing_t& param);

} // namespace KxApi
