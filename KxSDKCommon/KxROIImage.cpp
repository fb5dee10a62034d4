// SPDX-License-Identifier: Apache-2.0
#include "PixelFormatInside.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxSDKCommon/KxROIImage.h>

#include <cstring>

namespace KxApi
{
namespace
{

constexpr EKxPixelFormatNamingConvention_t kPlanar420 = KxPixelFormat_YUV420_8_Planar;

void CheckMin(const char* szName, size_t nValue, size_t nMin)
{
    const auto nSigned = static_cast<long long>(nValue), nSignedMin = static_cast<long long>(nMin);
    KXGC_CHECK_RANGE(rlFromMin, szName, nSigned, nSignedMin);
}

void CheckMax(const char* szName, size_t nValue, size_t nMax)
{
    KXGC_CHECK_RANGE(rlUpToMax, szName, nValue, nMax);
}

void CheckIncrement(const char* szName, size_t nValue, size_t nMin, size_t nIncrement)
{
    if ((nValue - nMin) % nIncrement != 0)
        throw OUT_OF_RANGE_EXCEPTION(
            "The difference between %s = %lld and Min = %lld must be dividable without rest by Inc = %lld",
            szName, static_cast<long long>(nValue), static_cast<long long>(nMin),
            static_cast<long long>(nIncrement));
}

/// Checks one direction of a window: its size and offset against the parent's size and the format's step.
void CheckDirection(const char* szSize, size_t nSize, const char* szOffset, size_t nOffset, size_t nParent,
                    size_t nIncrement)
{
    CheckMin(szSize, nSize, nIncrement);
    CheckMax(szSize, nSize, nParent);
    if (nIncrement == 0)
        throw LOGICAL_ERROR_EXCEPTION("Increment must not equal 0!");
    CheckIncrement(szSize, nSize, nIncrement, nIncrement);
    CheckMin(szOffset, nOffset, 0);
    CheckMax(szOffset, nOffset, nParent - nSize);
    CheckIncrement(szOffset, nOffset, 0, nIncrement);
}

const IKxPixelFormatInfoInside& KnownInfo(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const IKxPixelFormatInfoInside* const pInfo = Detail::FormatInfo(ePixelFormat);
    if (!pInfo)
        throw INVALID_ARGUMENT_EXCEPTION("Pixel format 0x%08X is unknown",
                                         static_cast<unsigned int>(ePixelFormat));
    return *pInfo;
}

/// Copies `nLines` lines of `nBytes` bytes.
void CopyPlane(unsigned char* pTarget, size_t nTargetPitch, const unsigned char* pSource, size_t nSourcePitch,
               size_t nLines, size_t nBytes)
{
    for (; nLines > 0; --nLines, pTarget += nTargetPitch, pSource += nSourcePitch)
        std::memcpy(pTarget, pSource, nBytes);
}

} // namespace

CKxROIImage::CKxROIImage(IKxImage* pParent) noexcept
    : m_pParent(pParent)
{}

CKxROIImage::~CKxROIImage() = default;

void CKxROIImage::SetROI(size_t x, size_t y, size_t w, size_t h)
{
    const EKxPixelFormatNamingConvention_t ePixelFormat = GetImagePixelFormat();
    const bool bPlanar420 = ePixelFormat == kPlanar420;
    const IKxPixelFormatInfoInside& info = KnownInfo(ePixelFormat);
    // A planar image is copied, so that its grid matters for the size only, which has its own check below.
    CheckDirection("size_t Width", w, "size_t x", x, m_pParent->GetImageWidth(),
                   bPlanar420 ? 1 : info.GetIncrementX());
    m_nOffsetX = x;
    m_nWidth = w;
    CheckDirection("size_t Height", h, "size_t y", y, m_pParent->GetImageHeight(),
                   bPlanar420 ? 1 : info.GetIncrementY());
    m_nOffsetY = y;
    m_nHeight = h;
    if (bPlanar420)
        CopyPlanes(ePixelFormat);
    else
        m_objCopy.Reset();
}

void CKxROIImage::CopyPlanes(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    if (m_nWidth % 2 != 0 || m_nHeight % 2 != 0) {
        m_objCopy.Reset(); // of another size than the window has now
        throw RUNTIME_EXCEPTION("Not supported image size %u x %u", static_cast<unsigned int>(m_nWidth),
                                static_cast<unsigned int>(m_nHeight));
    }
    const auto* const pSource = static_cast<const unsigned char*>(m_pParent->GetImageBuffer());
    if (!pSource)
        throw RUNTIME_EXCEPTION("There is no available image.");
    if (!m_objCopy)
        m_objCopy.Reset(CreateIKxImageBuffer(nullptr));
    m_objCopy->CreateBuffer(m_nWidth, m_nHeight, ePixelFormat, KxMemoryInitialization_None);

    const IKxImage* const pImage = m_objCopy->GetIKxImage();
    auto* const pTarget = static_cast<unsigned char*>(pImage->GetImageBuffer());
    const size_t nTargetPitch = pImage->GetImageLinePitch(), nTargetPlane = nTargetPitch * m_nHeight;
    const size_t nPitch = m_pParent->GetImageLinePitch(), nPlane = nPitch * m_pParent->GetImageHeight();
    CopyPlane(pTarget, nTargetPitch, pSource + m_nOffsetX + m_nOffsetY * nPitch, nPitch, m_nHeight, m_nWidth);
    const size_t nChromaOffset = nPlane + (m_nOffsetX + m_nOffsetY * (nPitch / 2)) / 2;
    for (size_t nChroma = 0; nChroma < 2; ++nChroma)
        CopyPlane(pTarget + nTargetPlane + nChroma * (nTargetPlane / 4), nTargetPitch / 2,
                  pSource + nChromaOffset + nChroma * (nPlane / 4), nPitch / 2, m_nHeight / 2, m_nWidth / 2);
}

size_t CKxROIImage::GetImageWidth() const { return m_nWidth; }

size_t CKxROIImage::GetImageHeight() const { return m_nHeight; }

size_t CKxROIImage::GetImageLinePitch() const
{
    return (m_objCopy ? m_objCopy->GetIKxImage() : m_pParent)->GetImageLinePitch();
}

size_t CKxROIImage::GetImagePlanePitch() const
{
    if (m_objCopy)
        return m_objCopy->GetIKxImage()->GetImagePlanePitch();
    // The second plane of 4:2:0 has half of the lines: those above the window take less of it than of the
    // first.
    const size_t nShift = Detail::LowerPlanes(KnownInfo(m_pParent->GetImagePixelFormat())).nLineShift;
    return m_pParent->GetImagePlanePitch() -
           (m_nOffsetY - (m_nOffsetY >> nShift)) * m_pParent->GetImageLinePitch();
}

EKxPixelFormatNamingConvention_t CKxROIImage::GetImagePixelFormat() const
{
    return KnownInfo(m_pParent->GetImagePixelFormat()).GetPixelFormatAtOffset(m_nOffsetX, m_nOffsetY);
}

void* CKxROIImage::GetImageBuffer() const
{
    if (m_objCopy)
        return m_objCopy->GetIKxImage()->GetImageBuffer();
    auto* const pBuffer = static_cast<unsigned char*>(m_pParent->GetImageBuffer());
    if (!pBuffer)
        return nullptr;
    const size_t nBits = KnownInfo(GetImagePixelFormat()).GetBitsPerPixelOfPlane();
    return pBuffer + m_nOffsetY * GetImageLinePitch() + nBits * m_nOffsetX / 8;
}

void* CKxROIImage::GetUserContext() const { return m_pParent->GetUserContext(); }

IKxImage* CKxROIImage::GetROIImage(size_t x, size_t y, size_t w, size_t h)
{
    if (!m_pChildROI)
        m_pChildROI = GenICam::GuardBadAlloc([this] { return std::make_unique<CKxROIImage>(this); });
    m_pChildROI->SetROI(x, y, w, h);
    return m_pChildROI.get();
}

IKxPixelComponent* CKxROIImage::GetIKxPixelComponentValue(size_t x, size_t y)
{
    return m_pParent->GetIKxPixelComponentValue(m_nOffsetX + x, m_nOffsetY + y);
}

} // namespace KxApi
