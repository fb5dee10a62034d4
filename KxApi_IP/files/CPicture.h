// SPDX-License-Identifier: Apache-2.0
// An image as the rows of samples that picture files hold.
#pragma once

#include "CImageValues.h"
#include "PictureForm.h"

#include <array>
#include <cstdint>
#include <vector>

namespace KxApi
{
namespace Detail
{

/// Colours 0x00RRGGBB of grey values.
using CColorTable = std::array<unsigned int, 256>;

/// What a picture file type asks of the rows.
struct CPictureDemand
{
    bool blueFirst;
    bool hasPalette; ///< 8-bit grey with a colour map is told as numbers of a palette
    bool hasAlpha;   ///< else it is left out
};

/// Rows of an image that FindPictureForm has a form for.
class CPicture
{
public:
    /// @param pColorMap null for images shown as they are; must outlive the object, as the values must.
    CPicture(const CImageValues& values, const CColorTable* pColorMap, const CPictureDemand& demand);

    size_t Width() const { return m_values.Width(); }
    size_t Height() const { return m_values.Height(); }
    const CPictureForm& Form() const { return m_form; }
    size_t RowBytes() const { return Width() * m_form.channels * m_form.SampleBytes(); }
    /// The colours of the samples, null unless they are numbers of a palette.
    const CColorTable* Palette() const { return m_isIndexed ? m_pColorMap : nullptr; }
    /// Name of the unpacked format whose values the rows are; empty for false colours.
    const char* FormatName() const { return m_szFormatName; }

    /// Writes line y: samples of a byte each, or of two in the order of this machine.
    void Row(size_t y, uint8_t* pRow) noexcept;

private:
    template <class T>
    void CopyRow(size_t y, T* pRow) const noexcept;
    void ColorRow(size_t y, uint8_t* pRow) noexcept;

    const CImageValues& m_values;
    const CColorTable* m_pColorMap;
    const bool m_isIndexed;
    const bool m_isBlueFirst;
    CPictureForm m_form;
    const char* m_szFormatName = "";
    std::array<uint8_t, 4> m_components{}; ///< of the image, by channel of the row
    std::vector<uint16_t> m_grey;          ///< a line's values on their way to colours
};

} // namespace Detail
} // namespace KxApi
