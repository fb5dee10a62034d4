// SPDX-License-Identifier: Apache-2.0
#include "CKxPixelFormatConverter.h"

#include "DestinationFormats.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

namespace KxApi
{

using Detail::ESetting;

namespace
{
constexpr int kMaxThreads = 64;
}

void CKxPixelFormatConverter::Convert(IKxImage* pSource, IKxImageBuffer* pTarget)
{
    if (!pSource || !pTarget)
        throw INVALID_ARGUMENT_EXCEPTION("%s pointer is NULL", pSource ? "IKxImageBuffer" : "IKxImage");
    if (pSource->GetImagePixelFormat() != GetDestinationPixelFormat())
        throw INVALID_ARGUMENT_EXCEPTION("0x%08X can't be converted", pSource->GetImagePixelFormat());
    pTarget->CopyImage(pSource);
}

bool CKxPixelFormatConverter::IsConvertible(EKxPixelFormatNamingConvention_t eSource,
                                            EKxPixelFormatNamingConvention_t eDestination) const
{
    return eSource == eDestination && Detail::FindDestinationFormat(eDestination);
}

void CKxPixelFormatConverter::SetConversionOption(int nThreads)
{
    if (nThreads < 1)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", "nThreads",
                                     static_cast<long long>(nThreads), 1LL);
    if (nThreads > kMaxThreads)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or smaller than Max = %lld", "nThreads",
                                     static_cast<long long>(nThreads), static_cast<long long>(kMaxThreads));
    m_nThreads = nThreads;
}

EKxPixelFormatNamingConvention_t CKxPixelFormatConverter::GetDestinationPixelFormat() const
{
    return m_objSettings.GetAll().GetEnum<EKxPixelFormatNamingConvention_t>(ESetting::DestinationPixelFormat);
}

void CKxPixelFormatConverter::SetDestinationPixelFormat(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    m_objSettings.Set(ESetting::DestinationPixelFormat, ePixelFormat);
}

bool CKxPixelFormatConverter::GetReverseY() const
{
    return m_objSettings.GetAll().Get<int>(ESetting::ReverseY) != 0;
}

void CKxPixelFormatConverter::SetReverseY(bool bReverseY)
{
    m_objSettings.Set(ESetting::ReverseY, bReverseY);
}

EKxBayerInterpolationMethod_t CKxPixelFormatConverter::GetBayerInterpolationMethod() const
{
    return m_objSettings.GetAll().GetEnum<EKxBayerInterpolationMethod_t>(ESetting::BayerInterpolationMethod);
}

void CKxPixelFormatConverter::SetBayerInterpolationMethod(EKxBayerInterpolationMethod_t eMethod)
{
    m_objSettings.Set(ESetting::BayerInterpolationMethod, eMethod);
}

double CKxPixelFormatConverter::GetGamma() const
{
    return m_objSettings.GetAll().Get<double>(ESetting::Gamma);
}

void CKxPixelFormatConverter::SetGamma(double dGamma) { m_objSettings.Set(ESetting::Gamma, dGamma); }

EKxBitExpansionMode_t CKxPixelFormatConverter::GetBitExpansionMode() const
{
    return m_objSettings.GetAll().GetEnum<EKxBitExpansionMode_t>(ESetting::BitExpansionMode);
}

void CKxPixelFormatConverter::SetBitExpansionMode(EKxBitExpansionMode_t eMode)
{
    m_objSettings.Set(ESetting::BitExpansionMode, eMode);
}

EKxPolarizationImageTransformationMethod_t
CKxPixelFormatConverter::GetPolarizationImageTransformationMethod() const
{
    return m_objSettings.GetAll().GetEnum<EKxPolarizationImageTransformationMethod_t>(
        ESetting::PolarizationImageTransformationMethod);
}

void CKxPixelFormatConverter::SetPolarizationImageTransformationMethod(
    EKxPolarizationImageTransformationMethod_t eMethod)
{
    m_objSettings.Set(ESetting::PolarizationImageTransformationMethod, eMethod);
}

double CKxPixelFormatConverter::GetPolarizationSpecifiedAngle() const
{
    return m_objSettings.GetAll().Get<double>(ESetting::PolarizationSpecifiedAngle);
}

void CKxPixelFormatConverter::SetPolarizationSpecifiedAngle(double dAngle)
{
    m_objSettings.Set(ESetting::PolarizationSpecifiedAngle, dAngle);
}

EKxColorMapType_t CKxPixelFormatConverter::GetColorMapType() const
{
    return m_objSettings.GetAll().GetEnum<EKxColorMapType_t>(ESetting::ColorMapType);
}

void CKxPixelFormatConverter::SetColorMapType(EKxColorMapType_t eType)
{
    m_objSettings.Set(ESetting::ColorMapType, eType);
}

bool CKxPixelFormatConverter::GetColorMapInversion() const
{
    return m_objSettings.GetAll().Get<int>(ESetting::ColorMapInversion) != 0;
}

void CKxPixelFormatConverter::SetColorMapInversion(bool bInversion)
{
    m_objSettings.Set(ESetting::ColorMapInversion, bInversion);
}

int32_t CKxPixelFormatConverter::GetColorMapPhase() const
{
    return m_objSettings.GetAll().Get<int32_t>(ESetting::ColorMapPhase);
}

void CKxPixelFormatConverter::SetColorMapPhase(int32_t nPhase)
{
    m_objSettings.Set(ESetting::ColorMapPhase, nPhase);
}

EKxPolarizationInterpolationMethod_t
CKxPixelFormatConverter::GetPolarizationSpecifiedAngleInterpolationMethod() const
{
    return m_objSettings.GetAll().GetEnum<EKxPolarizationInterpolationMethod_t>(
        ESetting::PolarizationSpecifiedAngleInterpolationMethod);
}

void CKxPixelFormatConverter::SetPolarizationSpecifiedAngleInterpolationMethod(
    EKxPolarizationInterpolationMethod_t eMethod)
{
    m_objSettings.Set(ESetting::PolarizationSpecifiedAngleInterpolationMethod, eMethod);
}

bool CKxPixelFormatConverter::GetADOLPDarkMode() const
{
    return m_objSettings.GetAll().Get<int>(ESetting::ADOLPDarkMode) != 0;
}

void CKxPixelFormatConverter::SetADOLPDarkMode(bool bDarkMode)
{
    m_objSettings.Set(ESetting::ADOLPDarkMode, bDarkMode);
}

bool CKxPixelFormatConverter::GetADOLPColorInversion() const
{
    return m_objSettings.GetAll().Get<int>(ESetting::ADOLPColorInversion) != 0;
}

void CKxPixelFormatConverter::SetADOLPColorInversion(bool bInversion)
{
    m_objSettings.Set(ESetting::ADOLPColorInversion, bInversion);
}

int32_t CKxPixelFormatConverter::GetADOLPColorPhase() const
{
    return m_objSettings.GetAll().Get<int32_t>(ESetting::ADOLPColorPhase);
}

void CKxPixelFormatConverter::SetADOLPColorPhase(int32_t nPhase)
{
    m_objSettings.Set(ESetting::ADOLPColorPhase, nPhase);
}

IKxConverterReleasable* CreateIKxConverter(EKxConverterType_t eType)
{
    CheckKxApiInitialized();
    if (eType != KxConverterType_PixelFormat)
        throw INVALID_ARGUMENT_EXCEPTION("EKxConverterType_t = %d is no kind of converter", eType);
    return GenICam::GuardBadAlloc([] { return new CKxPixelFormatConverter; });
}

} // namespace KxApi
