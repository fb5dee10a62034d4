// SPDX-License-Identifier: Apache-2.0
// The image window's images: taking them over, and making previews of them.
#include "image/KxDisplayImageWnd_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <iterator>

namespace KxApi
{
namespace
{

/// Conversions of the preview may use that many threads.
constexpr int kConversionThreads = 4;
/// What QImage wants of the beginnings of lines.
constexpr size_t kLineAlignment = 4;

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

void CKxDisplayImageWnd::WatchConverter()
{
    m_pConverter->SetConversionOption(kConversionThreads);
    m_pConverter->SetAutoDestination(true);
    m_pConverter->SetDestinationPixelFormat(m_eColorDestinationPixelFormat);
    GenApi::INodeMap* const pNodeMap = m_pConverter->GetINodeMap();
    const GenApi::CIntegerPtr pHidden(pNodeMap->GetNode("AvailableUnvisibleDestinationPixelFomat"));
    if (!pHidden.IsValid())
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    pHidden->SetValue(0, true);
    for (const char* const szNode : kConverterNodes) {
        GenApi::INode* const pNode = pNodeMap->GetNode(szNode);
        if (!pNode)
            throw LOGICAL_ERROR_EXCEPTION("The converter has no node %s", szNode);
        GenApi::Register(pNode, *this, &CKxDisplayImageWnd::OnNodeCallbackPixelFormatConv,
                         GenApi::cbPostOutsideLock);
    }
}

void CKxDisplayImageWnd::OnNodeCallbackPixelFormatConv(GenApi::INode* pNode)
{
    // A preview that sets its own destination is no change of a setting, and holds m_lockPreview.
    if (m_idOwnChange.load() == std::this_thread::get_id())
        return;
    m_bPreviewDirty = true;
    const GenICam::gcstring strName = pNode->GetName();
    uint32_t nKinds = UpdatePicture;
    if (strName == "ReverseY")
        nKinds |= UpdateReverseYMenu;
    if (strName == "BayerInterpolationMethod")
        nKinds |= UpdateBayerMenu;
    UpdateDialog(nKinds);
}

void CKxDisplayImageWnd::RegisterIKxImage(IKxImage* pIKxImage)
{
    CheckImage(pIKxImage);
    {
        const GenApi::AutoLock lock(m_lockRegister);
        const int32_t nSlot = m_objRing.Claim(CImageRing::RawWrite);
        m_objRing.Buffer(nSlot)->CopyImage(pIKxImage);
        m_objRing.Set(CImageRing::RawLatest, nSlot);
    }
    m_bHasImage = true;
    // This one directly: it only leaves a note for the next refresh.
    WithDialog([](CDisplayImagePartDlg& dialog) {
        if (dialog.isVisible())
            dialog.RefreshPreviewImage(false);
    });
}

IKxImage* CKxDisplayImageWnd::GetRegisteredIKxImage()
{
    return m_objRing.CheckedImage(m_objRing.Copy(CImageRing::RawLatest, CImageRing::RawHandedOut));
}

IKxImage* CKxDisplayImageWnd::GetConvertedIKxImage()
{
    try {
        IKxImageBufferReleasable* const pBuffer = m_bHasImage ? GetPreviewImage(1) : nullptr;
        if (pBuffer && pBuffer->GetIKxImage()->GetImageWidth() != 0)
            return pBuffer->GetIKxImage();
    } catch (...) { // NOLINT(bugprone-empty-catch): told below
    }
    throw RUNTIME_EXCEPTION("There is no available image.");
}

IKxImageBufferReleasable* CKxDisplayImageWnd::GetPreviewImage(unsigned char bForApplication)
{
    const GenApi::AutoLock lock(m_lockPreview);
    MakePreview();
    return m_objRing.Buffer(m_objRing.Copy(CImageRing::ConvertedLatest, bForApplication
                                                                            ? CImageRing::ConvertedApi
                                                                            : CImageRing::ConvertedWidget));
}

void CKxDisplayImageWnd::MakePreview()
{
    const int32_t nOldSource = m_objRing.Index(CImageRing::RawPreviewSource);
    const int32_t nSource = m_objRing.Copy(CImageRing::RawLatest, CImageRing::RawPreviewSource);
    if (nSource < 0)
        return;
    if (nSource == nOldSource && m_objRing.Index(CImageRing::ConvertedLatest) >= 0 && !m_bPreviewDirty)
        return;
    m_bPreviewDirty = false;
    IKxImage* const pSource = m_objRing.CheckedImage(nSource);
    if (CanBeShownAsItIs(*pSource)) {
        SetDestination(pSource->GetImagePixelFormat());
        m_objRing.Set(CImageRing::ConvertTarget, nSource);
    } else {
        const int32_t nTarget = m_objRing.Claim(CImageRing::ConvertTarget);
        try {
            if (m_ePreviewPixelFormatMode == KxPreviewPixelFormatMode_Auto)
                SetDestination(AutoDestination(pSource->GetImagePixelFormat()));
            m_pConverter->Convert(pSource, m_objRing.Buffer(nTarget));
        } catch (...) {
            m_objRing.Set(CImageRing::ConvertedLatest, CImageRing::kNone);
            throw;
        }
    }
    m_objRing.Move(CImageRing::ConvertTarget, CImageRing::ConvertedLatest);
}

bool CKxDisplayImageWnd::CanBeShownAsItIs(const IKxImage& image) const
{
    const EKxPixelFormatNamingConvention_t ePixelFormat = image.GetImagePixelFormat();
    if (m_ePreviewPixelFormatMode != KxPreviewPixelFormatMode_Auto)
        return ePixelFormat == m_pConverter->GetDestinationPixelFormat();
    return (ePixelFormat == KxPixelFormat_Mono8 || ePixelFormat == KxPixelFormat_BGR8 ||
            ePixelFormat == KxPixelFormat_BGRa8) &&
           image.GetImageLinePitch() % kLineAlignment == 0;
}

EKxPixelFormatNamingConvention_t
CKxDisplayImageWnd::AutoDestination(EKxPixelFormatNamingConvention_t ePixelFormat) const
{
    const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfo(ePixelFormat);
    bool bColor = pInfo->IsColor();
    if (pInfo->IsPolarized()) {
        const auto eMethod = m_pConverter->GetPolarizationImageTransformationMethod();
        const bool bKeepsColor = std::find(std::begin(kMethodsThatKeepColor), std::end(kMethodsThatKeepColor),
                                           eMethod) != std::end(kMethodsThatKeepColor);
        bColor = eMethod == KxPolarizationImageTransformationMethod_ADOLP || (bColor && bKeepsColor);
    }
    return bColor ? m_eColorDestinationPixelFormat : KxPixelFormat_Mono8;
}

void CKxDisplayImageWnd::SetDestination(EKxPixelFormatNamingConvention_t ePixelFormat)
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
