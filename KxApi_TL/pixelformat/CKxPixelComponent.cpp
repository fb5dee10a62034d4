// SPDX-License-Identifier: Apache-2.0

#include "PixelReader.h"

#include <Base/GCException.h>
#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImage.h>

namespace KxApi
{

static_assert(CKxPixelComponent::kMaxComponents == Detail::kMaxComponents);

namespace
{

// The raising of exceptions stands apart, so that the checks cost no more than their comparisons.
[[noreturn, gnu::cold, gnu::noinline]] void RaisePosition(const char* name, size_t value, size_t size)
{
    throw OUT_OF_RANGE_EXCEPTION("%s = %llu must be smaller than Max = %llu", name,
                                 static_cast<unsigned long long>(value),
                                 static_cast<unsigned long long>(size));
}

[[noreturn, gnu::cold, gnu::noinline]] void RaisePitch(const char* format, size_t x, size_t linePitch)
{
    throw INVALID_ARGUMENT_EXCEPTION("The line pitch of %zu bytes is too small for pixel %zu of a line in %s",
                                     linePitch, x, format);
}

[[noreturn, gnu::cold, gnu::noinline]] void RaiseFormat(EKxPixelFormatNamingConvention_t format)
{
    throw INVALID_ARGUMENT_EXCEPTION("Pixel format 0x%08X is unknown", static_cast<unsigned>(format));
}

[[noreturn, gnu::cold, gnu::noinline]] void RaiseNoBuffer()
{
    throw LOGICAL_ERROR_EXCEPTION("The image has no buffer");
}

[[noreturn, gnu::cold, gnu::noinline]] void RaiseIndex(size_t k, size_t count)
{
    throw OUT_OF_RANGE_EXCEPTION("component = %zu must be smaller than Max = %zu", k, count);
}

inline void CheckPosition(const char* name, size_t value, size_t size)
{
    if (value >= size)
        RaisePosition(name, value, size);
}

/// Lines have to hold their pixels, or the last ones would be read behind the buffer.
inline void CheckPitch(const Detail::CPixelFormatRow& row, size_t x, size_t linePitch)
{
    size_t bits = 0;
    if (__builtin_mul_overflow(x, row.planeBits, &bits) ||
        linePitch < bits / 8 + (bits % 8 + row.planeBits + 7) / 8)
        RaisePitch(row.name, x, linePitch);
}

} // namespace

void CKxPixelComponent::SetPixelComponent(const IKxImage* pImage, size_t x, size_t y)
{
    if (!pImage)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    CheckPosition("size_t x", x, pImage->GetImageWidth());
    CheckPosition("size_t y", y, pImage->GetImageHeight());
    const EKxPixelFormatNamingConvention_t format = pImage->GetImagePixelFormat();
    const Detail::CPixelFormatRow* const row =
        m_pRow && m_pRow->code == format ? m_pRow : Detail::FindFormat(format);
    if (!row)
        RaiseFormat(format);
    const auto* const buffer = static_cast<const uint8_t*>(pImage->GetImageBuffer());
    if (!buffer)
        RaiseNoBuffer();
    const size_t linePitch = pImage->GetImageLinePitch();
    CheckPitch(*row, x, linePitch);
    const Detail::CPixelMemory memory{
        buffer, linePitch, Detail::kLayouts[row->layout].planes > 1 ? pImage->GetImagePlanePitch() : 0};
    for (size_t k = 0; k < row->componentCount; ++k)
        m_anBits[k] = Detail::ReadComponent(*row, memory, k, x, y);
    m_pRow = row;
    m_nX = x;
    m_nY = y;
}

size_t CKxPixelComponent::GetComponentCount() const { return m_pRow ? m_pRow->componentCount : 0; }

void CKxPixelComponent::CheckIndex(size_t k) const
{
    const size_t count = m_pRow ? m_pRow->componentCount : 0;
    if (k >= count)
        RaiseIndex(k, count);
}

int64_t CKxPixelComponent::GetValue(size_t k) const
{
    CheckIndex(k);
    const Detail::CComponentRow& component = m_pRow->components[k];
    // Nearly all formats, for which no more has to be called.
    if (component.number == KxPixelNumber_Unsigned && component.bits < 64)
        return static_cast<int64_t>(m_anBits[k]);
    return Detail::ToInteger(component, m_anBits[k]);
}

double CKxPixelComponent::GetFloatValue(size_t k) const
{
    CheckIndex(k);
    return Detail::ToFloat(m_pRow->components[k], m_anBits[k]);
}

EKxPixelComponentType_t CKxPixelComponent::GetType(size_t k) const
{
    CheckIndex(k);
    return Detail::ComponentType(*m_pRow, k, m_nX, m_nY);
}

} // namespace KxApi
