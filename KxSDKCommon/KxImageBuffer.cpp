// SPDX-License-Identifier: Apache-2.0
#include "KxImageChart.h"
#include "PixelFormatInside.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxSDKCommon/KxAssert.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

namespace KxApi
{
namespace
{

void CheckPositive(const char* szName, size_t nValue)
{
    const auto nSigned = static_cast<long long>(nValue);
    KXGC_CHECK_RANGE(rlAboveMin, szName, nSigned, 0);
}

/// Checks the size and gives the format's description.
const IKxPixelFormatInfoInside& CheckedInfo(size_t nWidth, size_t nHeight,
                                            EKxPixelFormatNamingConvention_t ePixelFormat)
{
    CheckPositive("size_t nWidth", nWidth);
    CheckPositive("size_t nHeight", nHeight);
    const IKxPixelFormatInfoInside* const pIKxPixelFormatInfoDest = Detail::FormatInfo(ePixelFormat);
    KX_ASSERT(pIKxPixelFormatInfoDest, "(pIKxPixelFormatInfoDest) != NULL");
    return *pIKxPixelFormatInfoDest;
}

void CheckLinePitch(size_t nLinePitch, size_t nMin)
{
    KXGC_CHECK_RANGE(rlFromMin, "size_t nLinePitch", nLinePitch, nMin);
}

/// Bytes of an image; more than any allocator has when they can't be told.
size_t BytesNeeded(size_t nHeight, size_t nLinePitch, size_t nPlanes)
{
    size_t nBytes = 0;
    if (__builtin_mul_overflow(nHeight, nLinePitch, &nBytes) ||
        __builtin_mul_overflow(nBytes, nPlanes, &nBytes))
        throw BAD_ALLOC_EXCEPTION("%s", "");
    return nBytes;
}

struct CLines
{
    unsigned char* pBuffer;
    size_t nLinePitch;
};

/// Copies the lines of one plane; behind the last pixel of the last line nothing is read. Source and target
/// may be the same memory, the target lying in front.
void CopyLines(CLines target, CLines source, size_t nHeight, size_t nLineBytes)
{
    if (source.nLinePitch == target.nLinePitch) {
        std::memcpy(target.pBuffer, source.pBuffer, (nHeight - 1) * source.nLinePitch + nLineBytes);
        return;
    }
    const size_t nPitch = std::min(source.nLinePitch, target.nLinePitch);
    for (; nHeight > 0; --nHeight) {
        std::memcpy(target.pBuffer, source.pBuffer, nHeight > 1 ? nPitch : std::min(nPitch, nLineBytes));
        target.pBuffer += target.nLinePitch;
        source.pBuffer += source.nLinePitch;
    }
}

} // namespace

CKxImageBuffer::CKxImageBuffer(IKxAllocator* pAllocator) noexcept
    : m_pAllocator(pAllocator ? pAllocator : this)
{}

CKxImageBuffer::~CKxImageBuffer()
{
    Deallocate();
    if (m_pAllocator != this)
        m_pAllocator->OnDeregister();
}

void CKxImageBuffer::Release() { delete this; }

void CKxImageBuffer::Allocate(void** ppBuffer, size_t nSize, void**)
{
    *ppBuffer = ::operator new(nSize, std::nothrow);
}

void CKxImageBuffer::Deallocate(void* pBuffer, size_t, void*) { ::operator delete(pBuffer); }

void CKxImageBuffer::Deallocate()
{
    m_pROIImage.reset();
    if (!m_pBuffer)
        return;
    m_pAllocator->Deallocate(m_pBuffer, m_nBufferSize, m_pContext);
    m_pBuffer = nullptr;
    m_nBufferSize = m_nLinePitch = m_nHeight = m_nWidth = 0;
    m_ePixelFormat = KxPixelFormat_None;
}

void CKxImageBuffer::SetSize(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                             size_t nAlignment)
{
    const IKxPixelFormatInfoInside& info = CheckedInfo(nWidth, nHeight, ePixelFormat);
    SetSizeWithLinePitch(nWidth, nHeight, ePixelFormat, info.GetLinePitch(nWidth, nAlignment));
}

void CKxImageBuffer::SetSizeWithLinePitch(size_t nWidth, size_t nHeight,
                                          EKxPixelFormatNamingConvention_t ePixelFormat, size_t nLinePitch)
{
    const IKxPixelFormatInfoInside& info = CheckedInfo(nWidth, nHeight, ePixelFormat);
    CheckLinePitch(nLinePitch, info.GetLinePitch(nWidth, 1));
    const size_t nNeeded = BytesNeeded(nHeight, nLinePitch, info.GetPlaneCount());
    if (!m_pBuffer || m_nBufferSize < nNeeded) {
        Deallocate();
        m_pAllocator->Allocate(&m_pBuffer, nNeeded, &m_pContext);
        if (!m_pBuffer)
            throw BAD_ALLOC_EXCEPTION("%s", "");
        m_nBufferSize = nNeeded;
    }
    m_nWidth = nWidth;
    m_nHeight = nHeight;
    m_nLinePitch = nLinePitch;
    m_ePixelFormat = ePixelFormat;
}

void CKxImageBuffer::CreateBuffer(size_t nWidth, size_t nHeight,
                                  EKxPixelFormatNamingConvention_t ePixelFormat,
                                  _EKxMemoryInitialization_t eInitialization)
{
    SetSize(nWidth, nHeight, ePixelFormat, 0);
    switch (eInitialization) {
    case KxMemoryInitialization_None:
        break;
    case KxMemoryInitialization_Zero:
        std::memset(m_pBuffer, 0, m_nBufferSize);
        break;
    case KxMemoryInitialization_FF:
        std::memset(m_pBuffer, 0xFF, m_nBufferSize);
        break;
    case KxMemoryInitialization_Chart:
        if (const auto pFunction = Detail::GetFunction(ePixelFormat);
            !pFunction || !pFunction(GetIKxImage(), eInitialization))
            std::memset(m_pBuffer, 0, m_nBufferSize);
        break;
    }
}

IKxImage* CKxImageBuffer::GetIKxImage()
{
    if (!m_pBuffer)
        throw RUNTIME_EXCEPTION("There is no available image.");
    return this;
}

IKxImage* CKxImageBuffer::GetROIImage(size_t x, size_t y, size_t w, size_t h)
{
    if (!m_pROIImage)
        m_pROIImage = GenICam::GuardBadAlloc([this] { return std::make_unique<CKxROIImage>(GetIKxImage()); });
    m_pROIImage->SetROI(x, y, w, h);
    return m_pROIImage.get();
}

IKxPixelComponent* CKxImageBuffer::GetIKxPixelComponentValue(size_t x, size_t y)
{
    m_objPixelComponent.SetPixelComponent(GetIKxImage(), x, y);
    return &m_objPixelComponent;
}

void CKxImageBuffer::CopyImage(IKxImage* pSrcIKxImage)
{
    const IKxImageInside* const pSrcIKxImageInside = dynamic_cast<IKxImageInside*>(pSrcIKxImage);
    KX_ASSERT(pSrcIKxImageInside, "(pSrcIKxImageInside) != NULL");
    if (pSrcIKxImageInside == this)
        return;
    const size_t nWidth = pSrcIKxImage->GetImageWidth(), nHeight = pSrcIKxImage->GetImageHeight();
    const size_t nPlanePitch = pSrcIKxImage->GetImagePlanePitch();
    const EKxPixelFormatNamingConvention_t ePixelFormat = pSrcIKxImage->GetImagePixelFormat();
    const CLines source{static_cast<unsigned char*>(pSrcIKxImage->GetImageBuffer()),
                        pSrcIKxImage->GetImageLinePitch()};
    if (!source.pBuffer)
        throw RUNTIME_EXCEPTION("There is no available image.");
    if (m_pBuffer && source.pBuffer >= m_pBuffer &&
        source.pBuffer < static_cast<unsigned char*>(m_pBuffer) + m_nBufferSize)
    {
        // A window on this very image: it would lose its memory while it is copied.
        CKxImageBuffer copy(nullptr);
        copy.CopyImage(pSrcIKxImage);
        CopyImage(&copy);
        return;
    }

    const IKxPixelFormatInfoInside& info = CheckedInfo(nWidth, nHeight, ePixelFormat);
    size_t nLineBytes = info.GetLinePitch(nWidth, 1);
    if (info.GetPlaneCount() > 1)
        CheckLinePitch(source.nLinePitch, nLineBytes); // where planes begin depends on it
    SetSize(nWidth, nHeight, ePixelFormat, 0);
    const CLines target{static_cast<unsigned char*>(m_pBuffer), m_nLinePitch};
    CopyLines(target, source, nHeight, nLineBytes);

    const Detail::CLowerPlanes lower = Detail::LowerPlanes(info);
    const size_t nLines = (nHeight + lower.nLineShift) >> lower.nLineShift;
    nLineBytes /= lower.nPitchDivisor;
    for (size_t nPlane = 1; nPlane < info.GetPlaneCount(); ++nPlane) {
        CopyLines(
            {target.pBuffer + lower.Offset(nPlane, GetImagePlanePitch()),
             target.nLinePitch / lower.nPitchDivisor},
            {source.pBuffer + lower.Offset(nPlane, nPlanePitch), source.nLinePitch / lower.nPitchDivisor},
            nLines, nLineBytes);
    }
}

} // namespace KxApi
