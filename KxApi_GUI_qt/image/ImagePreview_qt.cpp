// SPDX-License-Identifier: Apache-2.0
#include "image/ImagePreview_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace KxApi
{
namespace
{

/// Conversions of the preview may use that many threads.
constexpr int kPreviewThreads = 4;
/// What QImage wants of the beginnings of lines.
constexpr size_t kPreviewLineAlignment = 4;

// Whatever changes one of them, the present image has to be converted again.
constexpr const char* kConverterNodes[] = {
    "DestinationPixelFormat",
    "BayerInterpolationMethod",
    "ReverseY",
    "Gamma",
    "BitExpansionMode",
    "PolarizationImageTransformationMethod",
    "PolarizationSpecifiedAngle",
    "PolarizationSpecifiedAngleInterpolationMethod",
    "ADOLPDarkMode",
    "ADOLPColorInversion",
    "ADOLPColorPhase",
    "ColorMapType",
    "ColorMapInversion",
    "ColorMapPhase",
};

constexpr EKxPixelFormatNamingConvention_t kColorDestination = KxPixelFormat_RGB8;

// The methods whose result has the colours of a polarised image with colour.
constexpr EKxPolarizationImageTransformationMethod_t kMethodsThatKeepColor[] = {
    KxPolarizationImageTransformationMethod_Intensity, KxPolarizationImageTransformationMethod_SpecifiedAngle,
    KxPolarizationImageTransformationMethod_Angle0,    KxPolarizationImageTransformationMethod_Angle45,
    KxPolarizationImageTransformationMethod_Angle90,   KxPolarizationImageTransformationMethod_Angle135,
};

/// Refuses what an image buffer can't copy.
void CheckImage(IKxImage* pIKxImage)
{
    if (!pIKxImage)
        throw INVALID_ARGUMENT_EXCEPTION("IKxImage pointer is NULL");
    if (!dynamic_cast<IKxImageInside*>(pIKxImage))
        throw INVALID_ARGUMENT_EXCEPTION("The image isn't an IKxImageInside, so it can't be copied.");
    if (!GetIKxPixelFormatInfo(pIKxImage->GetImagePixelFormat()))
        throw INVALID_ARGUMENT_EXCEPTION("Pixel format 0x%08X of the image is unknown",
                                         static_cast<unsigned>(pIKxImage->GetImagePixelFormat()));
}

} // namespace

CImagePreview::CImagePreview(IKxAllocator* pAllocator,
                             std::function<void(const GenICam::gcstring& strNode)> onConverterChanged)
    : m_onConverterChanged(std::move(onConverterChanged))
    , m_objRing([=] { return CreateIKxImageBuffer(pAllocator); })
    , m_pConverter(CreateIKxConverter(KxConverterType_PixelFormat))
{
    WatchConverter();
}

void CImagePreview::WatchConverter()
{
    m_pConverter->SetConversionOption(kPreviewThreads);
    m_pConverter->SetAutoDestination(true);
    m_pConverter->SetDestinationPixelFormat(kColorDestination);
    GenApi::INodeMap* const pNodeMap = m_pConverter->GetINodeMap();
    const GenApi::CIntegerPtr pHidden(pNodeMap->GetNode("AvailableUnvisibleDestinationPixelFomat"));
    if (!pHidden.IsValid())
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    pHidden->SetValue(0, true);
    for (const char* const szNode : kConverterNodes) {
        GenApi::INode* const pNode = pNodeMap->GetNode(szNode);
        if (!pNode)
            throw LOGICAL_ERROR_EXCEPTION("The converter has no node %s", szNode);
        GenApi::Register(pNode, *this, &CImagePreview::OnConverterNode, GenApi::cbPostOutsideLock);
    }
}

void CImagePreview::OnConverterNode(GenApi::INode* pNode)
{
    // A preview that sets its own destination is no change of a setting, and holds m_lockPreview.
    if (m_idOwnChange.load() == std::this_thread::get_id())
        return;
    m_bDirty = true;
    m_onConverterChanged(pNode->GetName());
}

void CImagePreview::SetAutoDestination(bool bAuto)
{
    m_bAuto = bAuto;
    m_pConverter->SetAutoDestination(bAuto);
    m_bDirty = true;
}

void CImagePreview::Register(IKxImage* pIKxImage)
{
    CheckImage(pIKxImage);
    {
        const GenApi::AutoLock lock(m_lockRegister);
        const int32_t nSlot = m_objRing.Claim(RawWrite);
        m_objRing.Buffer(nSlot)->CopyImage(pIKxImage);
        m_objRing.Set(RawLatest, nSlot);
    }
    m_bHasImage = true;
}

IKxImage* CImagePreview::CheckedImage(IKxImageBufferReleasable* pBuffer)
{
    if (!pBuffer)
        throw RUNTIME_EXCEPTION("There is no available image.");
    return pBuffer->GetIKxImage();
}

IKxImage* CImagePreview::GetRegistered()
{
    return CheckedImage(m_objRing.Buffer(m_objRing.Copy(RawLatest, RawHandedOut)));
}

IKxImage* CImagePreview::GetConverted()
{
    try {
        if (m_bHasImage && Get(Api)) {
            // Another thread may have the role name another buffer by now, and this one filled anew.
            IKxImage* const pImage = m_objRing.Look(Api, [](IKxImageBufferReleasable* pBuffer) {
                IKxImage* const pLatest = pBuffer ? pBuffer->GetIKxImage() : nullptr;
                return pLatest && pLatest->GetImageWidth() != 0 ? pLatest : nullptr;
            });
            if (pImage)
                return pImage;
        }
    } catch (...) { // NOLINT(bugprone-empty-catch): told below
    }
    return CheckedImage(nullptr);
}

IKxImageBufferReleasable* CImagePreview::Get(EKeeper eKeeper)
{
    const GenApi::AutoLock lock(m_lockPreview);
    Make();
    if (eKeeper == Widget)
        m_objRing.Copy(RawPreviewSource, RawWidgetSource);
    return m_objRing.Buffer(m_objRing.Copy(ConvertedLatest, eKeeper));
}

IKxImage* CImagePreview::GetWidgetSource() const
{
    IKxImageBufferReleasable* const pBuffer = m_objRing.Buffer(m_objRing.Index(RawWidgetSource));
    return pBuffer ? pBuffer->GetIKxImage() : nullptr;
}

void CImagePreview::Make()
{
    const int32_t nOldSource = m_objRing.Index(RawPreviewSource);
    const int32_t nSource = m_objRing.Copy(RawLatest, RawPreviewSource);
    if (nSource < 0)
        return;
    if (nSource == nOldSource && m_objRing.Index(ConvertedLatest) >= 0 && !m_bDirty)
        return;
    m_bDirty = false;
    IKxImage* const pSource = CheckedImage(m_objRing.Buffer(nSource));
    if (CanBeShownAsItIs(*pSource)) {
        SetDestination(pSource->GetImagePixelFormat());
        m_objRing.Set(ConvertTarget, nSource);
    } else {
        const int32_t nTarget = m_objRing.Claim(ConvertTarget);
        try {
            if (m_bAuto)
                SetDestination(AutoDestination(pSource->GetImagePixelFormat()));
            m_pConverter->Convert(pSource, m_objRing.Buffer(nTarget));
        } catch (...) {
            m_objRing.Set(ConvertedLatest, CRing::kNone);
            throw;
        }
    }
    m_objRing.Move(ConvertTarget, ConvertedLatest);
}

bool CImagePreview::CanBeShownAsItIs(const IKxImage& image) const
{
    const EKxPixelFormatNamingConvention_t ePixelFormat = image.GetImagePixelFormat();
    if (!m_bAuto)
        return ePixelFormat == m_pConverter->GetDestinationPixelFormat();
    return (ePixelFormat == KxPixelFormat_Mono8 || ePixelFormat == KxPixelFormat_BGR8 ||
            ePixelFormat == KxPixelFormat_BGRa8) &&
           image.GetImageLinePitch() % kPreviewLineAlignment == 0;
}

EKxPixelFormatNamingConvention_t
CImagePreview::AutoDestination(EKxPixelFormatNamingConvention_t ePixelFormat) const
{
    const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfo(ePixelFormat);
    bool bColor = pInfo->IsColor();
    if (pInfo->IsPolarized()) {
        const auto eMethod = m_pConverter->GetPolarizationImageTransformationMethod();
        const bool bKeepsColor = std::find(std::begin(kMethodsThatKeepColor), std::end(kMethodsThatKeepColor),
                                           eMethod) != std::end(kMethodsThatKeepColor);
        bColor = eMethod == KxPolarizationImageTransformationMethod_ADOLP || (bColor && bKeepsColor);
    }
    return bColor ? kColorDestination : KxPixelFormat_Mono8;
}

void CImagePreview::SetDestination(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    if (m_pConverter->GetDestinationPixelFormat() == ePixelFormat)
        return;
    m_idOwnChange = std::this_thread::get_id();
    try {
        m_pConverter->SetDestinationPixelFormat(ePixelFormat);
    } catch (...) {
        m_idOwnChange = std::thread::id();
        throw;
    }
    m_idOwnChange = std::thread::id();
}

} // namespace KxApi
