// SPDX-License-Identifier: Apache-2.0
#include "CPicture.h"

#include <cstring>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

bool IsSingle(const CPixelFormatRow& row) { return row.flags & kSingle; }

} // namespace

CPicture::CPicture(const CImageValues& values, const CColorTable* pColorMap, const CPictureDemand& demand)
    : m_values(values)
    , m_pColorMap(IsSingle(values.Format()) ? pColorMap : nullptr)
    , m_isIndexed(m_pColorMap && demand.hasPalette && values.Format().effectiveBits == 8)
    , m_isBlueFirst(demand.blueFirst)
    , m_form(FindPictureForm(static_cast<EKxPixelFormatNamingConvention_t>(values.Format().code))
                 .value_or(CPictureForm{1, 8}))
{
    const CPixelFormatRow& row = values.Format();
    if (m_pColorMap && !m_isIndexed) {
        m_form = CPictureForm{3, 8};
        m_grey.resize(values.Width());
        return;
    }
    if (m_form.channels == 4 && !demand.hasAlpha)
        m_form.channels = 3;
    if (!m_pColorMap) {
        if (const CPixelFormatRow* const unpacked =
                FindFormat(UnpackedFormat(static_cast<EKxPixelFormatNamingConvention_t>(row.code))))
            m_szFormatName = unpacked->name;
    }
    m_components = {0, 1, 2, 3};
    if (m_form.channels > 1 && (row.components[0].component == KxPixelComponent_B) != m_isBlueFirst)
        std::swap(m_components[0], m_components[2]);
}

template <class T>
void CPicture::CopyRow(size_t y, T* pRow) const noexcept
{
    const bool isSameOrder = m_components[0] == 0 && m_form.channels == m_values.ComponentCount();
    if (isSameOrder && sizeof(T) == 1 && m_values.PlaneCount() == 1 &&
        m_values.Format().bits == 8 * m_form.channels)
    {
        std::memcpy(pRow, m_values.PlainLine<uint8_t>(0, y), RowBytes());
        return;
    }
    for (size_t channel = 0; channel < m_form.channels; ++channel)
        m_values.Read(m_components[channel], 0, y, Width(), pRow + channel, m_form.channels);
}

void CPicture::ColorRow(size_t y, uint8_t* pRow) noexcept
{
    m_values.Read(0, 0, y, Width(), m_grey.data());
    const unsigned shift = m_values.Format().effectiveBits - 8U;
    const unsigned firstShift = m_isBlueFirst ? 0 : 16;
    for (const uint16_t grey : m_grey) {
        const unsigned int color = (*m_pColorMap)[grey >> shift];
        *pRow++ = static_cast<uint8_t>(color >> firstShift);
        *pRow++ = static_cast<uint8_t>(color >> 8);
        *pRow++ = static_cast<uint8_t>(color >> (16 - firstShift));
    }
}

void CPicture::Row(size_t y, uint8_t* pRow) noexcept
{
    if (m_pColorMap && !m_isIndexed)
        ColorRow(y, pRow);
    else if (m_form.SampleBytes() == 1)
        CopyRow(y, pRow);
    else
        CopyRow(y, reinterpret_cast<uint16_t*>(pRow));
}

} // namespace Detail
} // namespace KxApi
