// SPDX-License-Identifier: Apache-2.0
// The measured values of drawn objects, for programs that list them.
#pragma once

#include <Base/GCString.h>
#include <KxApi_GUI/KxDrawingTypes.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxApi
{

/// A position in an image, as parts of its width and height.
struct CKxDrawingPoint
{
    double dX = 0;
    double dY = 0;
};

/// What an object measures, in the units and the precision of the tool's features, as its labels show it.
/// Angles and lengths may be several.
struct CKxDrawingMeasurement
{
    _EKxDrawingItemType_t eType = KxDrawingItemType_None;
    GenICam::gcstring strName;
    bool bSelected = false;
    uint32_t nValues = 0; ///< which of the values there are, a mask of _EKxDisplayText_t
    double dWidth = 0;
    double dHeight = 0;
    std::vector<double> vecLengths;
    double dArea = 0;
    std::vector<double> vecAngles;
    double dCentreX = 0; ///< image pixels, without conversion, as all positions
    double dCentreY = 0;
    double dLeft = 0; ///< of the box round all points
    double dTop = 0;
    std::vector<CKxDrawingPoint> vecPoints; ///< of the object, such as the ends of a line
};

/// A further face of the drawing tool: `dynamic_cast` an IKxDrawingTool to it. Reading by it leaves selection
/// and selectors as they are, which reading by features doesn't. Any thread.
struct IKxDrawingMeasurements
{
    /// Of all objects in the order of painting, at the size of the last painted image; hidden ones too.
    virtual std::vector<CKxDrawingMeasurement> GetMeasurements() const = 0;

    /// Another number after each change of the drawing, of its units or of the image's size.
    virtual uint64_t GetRevision() const = 0;

    /// Makes one object the only selected one, as a click does. Raises OutOfRangeException.
    virtual void SelectObject(size_t nIndex) = 0;

protected:
    virtual ~IKxDrawingMeasurements() = default;
};

} // namespace KxApi
