// SPDX-License-Identifier: Apache-2.0
#include "image/ImageRing_qt.h"

#include <Base/GCException.h>

#include <bitset>

namespace KxApi
{

CImageRing::CImageRing(IKxAllocator* pAllocator)
{
    m_arrIndexes.fill(kNone);
    for (auto& pBuffer : m_arrBuffers)
        pBuffer.Reset(CreateIKxImageBuffer(pAllocator));
}

int32_t CImageRing::Index(ERole eRole) const
{
    const GenApi::AutoLock lock(m_lockImageIndex);
    return m_arrIndexes[eRole];
}

void CImageRing::Set(ERole eRole, int32_t nIndex)
{
    const GenApi::AutoLock lock(m_lockImageIndex);
    m_arrIndexes[eRole] = nIndex;
}

int32_t CImageRing::Copy(ERole eFrom, ERole eTo)
{
    const GenApi::AutoLock lock(m_lockImageIndex);
    return m_arrIndexes[eTo] = m_arrIndexes[eFrom];
}

int32_t CImageRing::Move(ERole eFrom, ERole eTo)
{
    const GenApi::AutoLock lock(m_lockImageIndex);
    m_arrIndexes[eTo] = m_arrIndexes[eFrom];
    m_arrIndexes[eFrom] = kNone;
    return m_arrIndexes[eTo];
}

int32_t CImageRing::Claim(ERole eRole)
{
    const GenApi::AutoLock lock(m_lockImageIndex);
    std::bitset<kSlots> used;
    for (const int32_t nIndex : m_arrIndexes) {
        if (nIndex >= 0)
            used.set(static_cast<size_t>(nIndex));
    }
    for (size_t nSlot = 0; nSlot < kSlots; ++nSlot) {
        if (!used[nSlot]) {
            m_arrIndexes[eRole] = static_cast<int32_t>(nSlot);
            break;
        }
    }
    return m_arrIndexes[eRole];
}

IKxImage* CImageRing::CheckedImage(int32_t nIndex) const
{
    IKxImageBufferReleasable* const pBuffer = Buffer(nIndex);
    if (!pBuffer)
        throw RUNTIME_EXCEPTION("There is no available image.");
    return pBuffer->GetIKxImage();
}

} // namespace KxApi
