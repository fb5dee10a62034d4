// SPDX-License-Identifier: Apache-2.0
#include "CKxPixelFormatConverter.h"

#include "DestinationFormats.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <functional>
#include <optional>

namespace KxApi
{

using Detail::CDestinationFormat;
using Detail::CSettingValues;
using Detail::CSourceFormat;
using Detail::CSourceView;
using Detail::ESetting;

namespace
{

constexpr int kMaxThreads = 64;

/// Longer than any camera's, and short enough for the working memory.
constexpr size_t kMaxWidth = size_t{1} << 24;

long long Signed(size_t nValue) { return static_cast<long long>(nValue); }

CSourceFormat CheckedFormat(EKxPixelFormatNamingConvention_t pixelFormat)
{
    const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfo(pixelFormat);
    if (!pInfo)
        throw INVALID_ARGUMENT_EXCEPTION("PixelFormat = 0x%08X is no known pixel format", pixelFormat);
    const std::optional<CSourceFormat> source = Detail::DescribeSourceFormat(pixelFormat);
    if (!source)
        throw INVALID_ARGUMENT_EXCEPTION("%s can't be converted", pInfo->GetName().c_str());
    return *source;
}

void CheckLength(const char* name, size_t nValue, size_t nMin, size_t nStep, const CSourceFormat& source)
{
    KXGC_CHECK_RANGE(rlFromMin, name, nValue, nMin);
    if (nValue % nStep != 0)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be a multiple of %lld for %s", name, Signed(nValue),
                                     Signed(nStep), source.pInfo->GetName().c_str());
}

CSourceView CheckedView(const IKxImage& image, const CSourceFormat& source)
{
    const CSourceView view{static_cast<const uint8_t*>(image.GetImageBuffer()), image.GetImageWidth(),
                           image.GetImageHeight(), image.GetImageLinePitch(), image.GetImagePlanePitch()};
    const size_t nMin = source.isPolarized ? 2 : 1; // a square of polarisers
    CheckLength("Width", view.nWidth, nMin, source.nStepX, source);
    CheckLength("Height", view.nHeight, nMin, source.nStepY, source);
    KXGC_CHECK_RANGE(rlUpToMax, "Width", view.nWidth, kMaxWidth);
    const size_t nLineBytes = source.pInfo->GetLinePitch(view.nWidth, 1);
    if (view.nLinePitch < nLineBytes)
        throw INVALID_ARGUMENT_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", "LinePitch",
                                         Signed(view.nLinePitch), Signed(nLineBytes));
    source.pInfo->GetImageSize(view.nHeight, view.nLinePitch); // raises when it can't be told
    if (source.pInfo->GetPlaneCount() > 1 && view.nPlanePitch < view.nLinePitch * view.nHeight)
        throw INVALID_ARGUMENT_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", "PlanePitch",
                                         Signed(view.nPlanePitch), Signed(view.nLinePitch * view.nHeight));
    if (!view.pBytes)
        throw RUNTIME_EXCEPTION("There is no available image.");
    return view;
}

/// Raises InvalidArgumentException when the source has pixels in the memory of the target's image.
void CheckApart(const CSourceView& view, const CSourceFormat& source, IKxImageBuffer& target)
{
    if (!target.HasImageBuffer())
        return;
    const IKxImage& image = *target.GetIKxImage();
    const auto* const pTarget = static_cast<const uint8_t*>(image.GetImageBuffer());
    const size_t nTargetBytes = image.GetImageHeight() * image.GetImageLinePitch();
    const size_t nLineBytes = source.pInfo->GetLinePitch(view.nWidth, 1);
    const size_t nSourceBytes = source.pInfo->GetPlaneCount() > 1
                                    ? source.pInfo->GetImageSize(view.nHeight, view.nLinePitch)
                                    : (view.nHeight - 1) * view.nLinePitch + nLineBytes;
    const std::less<const uint8_t*> before;
    if (before(view.pBytes, pTarget + nTargetBytes) && before(pTarget, view.pBytes + nSourceBytes))
        throw INVALID_ARGUMENT_EXCEPTION("The source lies in the memory of the target");
}

} // namespace

const CDestinationFormat& CKxPixelFormatConverter::DestinationFor(const CSourceFormat& source,
                                                                  const CSettingValues& values) const
{
    const CDestinationFormat& set = *Detail::FindDestinationFormat(
        values.GetEnum<EKxPixelFormatNamingConvention_t>(ESetting::DestinationPixelFormat));
    if (!m_autoDestination)
        return set;
    if (!Detail::HasColorResult(source, values))
        return *Detail::FindDestinationFormat(KxPixelFormat_Mono8);
    return set.HasColor() ? set : *Detail::FindDestinationFormat(KxPixelFormat_BGR8);
}

void CKxPixelFormatConverter::Convert(IKxImage* pSource, IKxImageBuffer* pTarget)
{
    if (!pSource || !pTarget)
        throw INVALID_ARGUMENT_EXCEPTION("%s pointer is NULL", pSource ? "IKxImageBuffer" : "IKxImage");
    GenICam::GuardBadAlloc([&] {
        const CKxMutexLock lock(m_mutexConversion);
        const CSettingValues values = m_settings.GetAll();
        const CSourceFormat source = CheckedFormat(pSource->GetImagePixelFormat());
        const CSourceView view = CheckedView(*pSource, source);
        CheckApart(view, source, *pTarget);
        const Detail::CConversionTask task{source, &DestinationFor(source, values), view.nWidth, values};
        if (!m_pPlan || !(m_pPlan->GetTask() == task))
            m_pPlan = std::make_unique<Detail::CConversionPlan>(task);

        pTarget->SetSize(view.nWidth, view.nHeight, task.pDestination->pixelFormat, 0);
        CheckApart(view, source, *pTarget); // the memory may be another now
        const IKxImage& image = *pTarget->GetIKxImage();
        const Detail::CTargetView target{static_cast<uint8_t*>(image.GetImageBuffer()),
                                         image.GetImageLinePitch(), view.nHeight,
                                         values.Get<int>(ESetting::ReverseY) != 0};
        m_pPlan->Run(view, target, static_cast<size_t>(m_nThreads), m_workers);
    });
}

bool CKxPixelFormatConverter::IsConvertible(EKxPixelFormatNamingConvention_t eSource,
                                            EKxPixelFormatNamingConvention_t eDestination) const
{
    return Detail::FindDestinationFormat(eDestination) && Detail::DescribeSourceFormat(eSource);
}

void CKxPixelFormatConverter::SetConversionOption(int nThreads)
{
    KXGC_CHECK_RANGE(rlFromMin, "nThreads", nThreads, 1);
    KXGC_CHECK_RANGE(rlUpToMax, "nThreads", nThreads, kMaxThreads);
    m_nThreads = nThreads;
}

EKxPixelFormatNamingConvention_t CKxPixelFormatConverter::GetDestinationPixelFormat() const
{
    return m_settings.GetAll().GetEnum<EKxPixelFormatNamingConvention_t>(ESetting::DestinationPixelFormat);
}

void CKxPixelFormatConverter::SetDestinationPixelFormat(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    m_settings.Set(ESetting::DestinationPixelFormat, ePixelFormat);
}

bool CKxPixelFormatConverter::GetReverseY() const
{
    return m_settings.GetAll().Get<int>(ESetting::ReverseY) != 0;
}

void CKxPixelFormatConverter::SetReverseY(bool bReverseY) { m_settings.Set(ESetting::ReverseY, bReverseY); }

EKxBayerInterpolationMethod_t CKxPixelFormatConverter::GetBayerInterpolationMethod() const
{
    return m_settings.GetAll().GetEnum<EKxBayerInterpolationMethod_t>(ESetting::BayerInterpolationMethod);
}

void CKxPixelFormatConverter::SetBayerInterpolationMethod(EKxBayerInterpolationMethod_t eMethod)
{
    m_settings.Set(ESetting::BayerInterpolationMethod, eMethod);
}

double CKxPixelFormatConverter::GetGamma() const { return m_settings.GetAll().Get<double>(ESetting::Gamma); }

void CKxPixelFormatConverter::SetGamma(double dGamma) { m_settings.Set(ESetting::Gamma, dGamma); }

EKxBitExpansionMode_t CKxPixelFormatConverter::GetBitExpansionMode() const
{
    return m_settings.GetAll().GetEnum<EKxBitExpansionMode_t>(ESetting::BitExpansionMode);
}

void CKxPixelFormatConverter::SetBitExpansionMode(EKxBitExpansionMode_t eMode)
{
    m_settings.Set(ESetting::BitExpansionMode, eMode);
}

EKxPolarizationImageTransformationMethod_t
CKxPixelFormatConverter::GetPolarizationImageTransformationMethod() const
{
    return m_settings.GetAll().GetEnum<EKxPolarizationImageTransformationMethod_t>(
        ESetting::PolarizationImageTransformationMethod);
}

void CKxPixelFormatConverter::SetPolarizationImageTransformationMethod(
    EKxPolarizationImageTransformationMethod_t eMethod)
{
    m_settings.Set(ESetting::PolarizationImageTransformationMethod, eMethod);
}

double CKxPixelFormatConverter::GetPolarizationSpecifiedAngle() const
{
    return m_settings.GetAll().Get<double>(ESetting::PolarizationSpecifiedAngle);
}

void CKxPixelFormatConverter::SetPolarizationSpecifiedAngle(double dAngle)
{
    m_settings.Set(ESetting::PolarizationSpecifiedAngle, dAngle);
}

EKxColorMapType_t CKxPixelFormatConverter::GetColorMapType() const
{
    return m_settings.GetAll().GetEnum<EKxColorMapType_t>(ESetting::ColorMapType);
}

void CKxPixelFormatConverter::SetColorMapType(EKxColorMapType_t eType)
{
    m_settings.Set(ESetting::ColorMapType, eType);
}

bool CKxPixelFormatConverter::GetColorMapInversion() const
{
    return m_settings.GetAll().Get<int>(ESetting::ColorMapInversion) != 0;
}

void CKxPixelFormatConverter::SetColorMapInversion(bool bInversion)
{
    m_settings.Set(ESetting::ColorMapInversion, bInversion);
}

int32_t CKxPixelFormatConverter::GetColorMapPhase() const
{
    return m_settings.GetAll().Get<int32_t>(ESetting::ColorMapPhase);
}

void CKxPixelFormatConverter::SetColorMapPhase(int32_t nPhase)
{
    m_settings.Set(ESetting::ColorMapPhase, nPhase);
}

EKxPolarizationInterpolationMethod_t
CKxPixelFormatConverter::GetPolarizationSpecifiedAngleInterpolationMethod() const
{
    return m_settings.GetAll().GetEnum<EKxPolarizationInterpolationMethod_t>(
        ESetting::PolarizationSpecifiedAngleInterpolationMethod);
}

void CKxPixelFormatConverter::SetPolarizationSpecifiedAngleInterpolationMethod(
    EKxPolarizationInterpolationMethod_t eMethod)
{
    m_settings.Set(ESetting::PolarizationSpecifiedAngleInterpolationMethod, eMethod);
}

bool CKxPixelFormatConverter::GetADOLPDarkMode() const
{
    return m_settings.GetAll().Get<int>(ESetting::ADOLPDarkMode) != 0;
}

void CKxPixelFormatConverter::SetADOLPDarkMode(bool bDarkMode)
{
    m_settings.Set(ESetting::ADOLPDarkMode, bDarkMode);
}

bool CKxPixelFormatConverter::GetADOLPColorInversion() const
{
    return m_settings.GetAll().Get<int>(ESetting::ADOLPColorInversion) != 0;
}

void CKxPixelFormatConverter::SetADOLPColorInversion(bool bInversion)
{
    m_settings.Set(ESetting::ADOLPColorInversion, bInversion);
}

int32_t CKxPixelFormatConverter::GetADOLPColorPhase() const
{
    return m_settings.GetAll().Get<int32_t>(ESetting::ADOLPColorPhase);
}

void CKxPixelFormatConverter::SetADOLPColorPhase(int32_t nPhase)
{
    m_settings.Set(ESetting::ADOLPColorPhase, nPhase);
}

IKxConverterReleasable* CreateIKxConverter(EKxConverterType_t eType)
{
    CheckKxApiInitialized();
    if (eType != KxConverterType_PixelFormat)
        throw INVALID_ARGUMENT_EXCEPTION("EKxConverterType_t = %d is no kind of converter", eType);
    return GenICam::GuardBadAlloc([] { return new CKxPixelFormatConverter; });
}

} // namespace KxApi
