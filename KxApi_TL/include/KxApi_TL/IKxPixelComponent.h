// SPDX-License-Identifier: Apache-2.0
// The values of one pixel.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/KxApi_TLLinkage.h>
#include <KxApi_TL/KxPixelComponentType.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

/// The values of a pixel, as they were when the pixel was asked for. One thread at a time.
struct IKxPixelComponent
{
    /// Number of values; chroma that several pixels share belongs to each of them.
    virtual size_t GetComponentCount() const = 0;
    /// Value of component k as integer: a float is cut to its whole part, what is beyond the range of int64_t
    /// comes as the nearest limit, and what is no number as 0. Raises OutOfRangeException from
    /// GetComponentCount on, as the next ones do.
    virtual int64_t GetValue(size_t k) const = 0;
    /// Value of component k, for formats of floating point.
    virtual double GetFloatValue(size_t k) const = 0;
    virtual EKxPixelComponentType_t GetType(size_t k) const = 0;

protected:
    ~IKxPixelComponent() = default;
};

/// What there is to know of a type of components. Lives as long as the process; any thread.
struct IKxPixelComponentInfo
{
    virtual EKxPixelComponentType_t GetType() const = 0;
    /// Name as users see it: "Mono", "R", "Gb", "Y", behind a polariser with its angle: "45", "R_135".
    virtual GenICam::gcstring GetName() const = 0;
    virtual EKxPixelComponent_t GetComponent() const = 0;
    virtual size_t GetEffectiveBits() const = 0;
    virtual EKxPolarization_t GetPolarization() const = 0;
    virtual EKxPixelNumber_t GetNumber() const = 0;

protected:
    ~IKxPixelComponentInfo() = default;
};

/// The description of a type that occurs in a known pixel format, else null. Any thread.
KXAPI_TL_API const IKxPixelComponentInfo* GetIKxPixelComponentInfo(EKxPixelComponentType_t eType);

} // namespace KxApi
