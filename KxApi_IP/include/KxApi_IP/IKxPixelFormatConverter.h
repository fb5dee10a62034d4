// SPDX-License-Identifier: Apache-2.0
// Converts images from one pixel format to another.
#pragma once

#include <KxApi_IP/KxApi_IPLinkage.h>
#include <KxApi_IP/KxConversionOptions.h>
#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxPixelFormat.h>
#include <KxSDKCommon/ColorMap.h>

#include <cstdint>

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{

struct IKxImage;
struct IKxImageBuffer;

/// A converter and its settings. Any thread; conversions of one converter take turns.
///
/// Settings are nodes too (GetINodeMap), under the names of the operations: a change of either shows in the
/// other, and runs the node's callbacks, in the thread that makes it and before the call returns. A setter
/// that is given the present value does nothing. One outside its range raises OutOfRangeException and
/// changes nothing. A conversion takes the settings that stand when it begins.
///
/// The same conversion again, with an image of the same size, allocates no memory.
struct IKxPixelFormatConverter
{
    /// Makes the target the source's image in the destination format, of the same size, with the format's
    /// default line pitch.
    ///
    /// Source formats: mono, Bayer, RGB, BGR, YUV and YCbCr of up to 16 bits, packed, planar or not, the
    /// polarised ones, and ranges as whole or real numbers; see IsConvertible. Raises, before anything of the
    /// target changes: InvalidArgumentException for null, an unknown format or pair of formats, lines shorter
    /// than their pixels, a source that lies in the target's memory; OutOfRangeException for a size of 0 or
    /// one that isn't whole in the source's sub-sampling; RuntimeException for an image without memory;
    /// BadAllocException.
    virtual void Convert(IKxImage* pSource, IKxImageBuffer* pTarget) = 0;

    /// The settings as nodes, made at the first call. Owned by the converter.
    virtual GenApi::INodeMap* GetINodeMap() = 0;

    /// Greatest number of threads that a conversion may use, the caller's counted: 1 to 64, at first 1. Small
    /// images take fewer. The threads live as long as the converter and sleep between conversions.
    virtual void SetConversionOption(int nThreads) = 0;

    /// One of the formats for which IsConvertible is true; at first BGR8. Raises InvalidArgumentException for
    /// another.
    virtual EKxPixelFormatNamingConvention_t GetDestinationPixelFormat() const = 0;
    virtual void SetDestinationPixelFormat(EKxPixelFormatNamingConvention_t ePixelFormat) = 0;

    /// Turns the image upside down; at first not.
    virtual bool GetReverseY() const = 0;
    virtual void SetReverseY(bool bReverseY) = 0;

    /// At first Bilinear.
    virtual EKxBayerInterpolationMethod_t GetBayerInterpolationMethod() const = 0;
    virtual void SetBayerInterpolationMethod(EKxBayerInterpolationMethod_t eMethod) = 0;

    /// Exponent on values taken as 0 to 1: below 1 lightens. 0.1 to 10, at first 1. Alpha is left alone.
    virtual double GetGamma() const = 0;
    virtual void SetGamma(double dGamma) = 0;

    /// Whether Convert chooses the destination itself: Mono8 for sources without colour and what polarisation
    /// methods make without colour; else the destination format, or BGR8 when that is mono. At first not.
    virtual void SetAutoDestination(bool bAuto) = 0;
    virtual bool GetAutoDestination() const = 0;

    virtual int GetConversionOption() const = 0;

    /// At first FullRange.
    virtual EKxBitExpansionMode_t GetBitExpansionMode() const = 0;
    virtual void SetBitExpansionMode(EKxBitExpansionMode_t eMode) = 0;

    /// Whether Convert takes this pair of formats.
    virtual bool IsConvertible(EKxPixelFormatNamingConvention_t eSource,
                               EKxPixelFormatNamingConvention_t eDestination) const = 0;

protected:
    ~IKxPixelFormatConverter() = default;
};

/// Further settings: polarised images, and colour maps, which give a result without colour the colours of
/// SetColorMap when the destination has colour. All of it as above.
struct IKxPixelFormatConverterInside : IKxPixelFormatConverter
{
    /// What is made of polarised images; at first Off.
    virtual EKxPolarizationImageTransformationMethod_t GetPolarizationImageTransformationMethod() const = 0;
    virtual void
    SetPolarizationImageTransformationMethod(EKxPolarizationImageTransformationMethod_t eMethod) = 0;

    /// Degrees, 0 to 180, at first 0; for the method SpecifiedAngle.
    virtual double GetPolarizationSpecifiedAngle() const = 0;
    virtual void SetPolarizationSpecifiedAngle(double dAngle) = 0;

    /// At first Normal, no inversion, phase 0; the phase is 0 to 255.
    virtual EKxColorMapType_t GetColorMapType() const = 0;
    virtual void SetColorMapType(EKxColorMapType_t eType) = 0;
    virtual bool GetColorMapInversion() const = 0;
    virtual void SetColorMapInversion(bool bInversion) = 0;
    virtual int32_t GetColorMapPhase() const = 0;
    virtual void SetColorMapPhase(int32_t nPhase) = 0;

    /// For the method SpecifiedAngle; at first Off.
    virtual EKxPolarizationInterpolationMethod_t GetPolarizationSpecifiedAngleInterpolationMethod() const = 0;
    virtual void
    SetPolarizationSpecifiedAngleInterpolationMethod(EKxPolarizationInterpolationMethod_t eMethod) = 0;

    /// For the method ADOLP: whether light without polarisation is black and not white; inversion and phase
    /// (0 to 255) of the circle of colours. At first white, no inversion, 0.
    virtual bool GetADOLPDarkMode() const = 0;
    virtual void SetADOLPDarkMode(bool bDarkMode) = 0;
    virtual bool GetADOLPColorInversion() const = 0;
    virtual void SetADOLPColorInversion(bool bInversion) = 0;
    virtual int32_t GetADOLPColorPhase() const = 0;
    virtual void SetADOLPColorPhase(int32_t nPhase) = 0;

protected:
    ~IKxPixelFormatConverterInside() = default;
};

/// The form that the factory returns.
struct IKxConverterReleasable : IKxPixelFormatConverterInside, IKxReleasable
{
protected:
    ~IKxConverterReleasable() = default;
};

/// Kinds of converters.
enum EKxConverterType_t : int32_t
{
    KxConverterType_PixelFormat = 0,
};

/// A new converter; the caller gives it back by Release. Any thread. Raises LogicalErrorException when the
/// SDK is not started, InvalidArgumentException for an unknown kind, BadAllocException.
KXAPI_IP_API IKxConverterReleasable* CreateIKxConverter(EKxConverterType_t eType);

/// The same with the kind as a number.
inline IKxConverterReleasable* CreateIKxConverter(int nType)
{
    return CreateIKxConverter(static_cast<EKxConverterType_t>(nType));
}

} // namespace KxApi
