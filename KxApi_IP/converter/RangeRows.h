// SPDX-License-Identifier: Apache-2.0
// Real numbers, such as the distances of a range camera, as grey.
#pragma once

#include "CLineReader.h"
#include "CRowBuffer.h"
#include "RowSources.h"

namespace KxApi
{
namespace Detail
{

/// What the values of an image are scaled by: its own least one becomes 1 and its greatest 65535. 0 stands
/// for pixels without a number, which range cameras tell by infinities or NaN.
CRealScale FindRealScale(const CSourceFormat& format, const CSourceView& source);

/// The values of the image in 16 bits.
class CRealRows final : public IRowSource<uint16_t>
{
public:
    CRealRows(const CSourceFormat& format, size_t nWidth)
        : m_format(format)
        , m_row(1, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }
    void BeginLine(size_t nLine) override;
    CRow<uint16_t> Get(size_t nFirst, size_t) override { return {m_row.Row(0) + nFirst}; }

private:
    CSourceFormat m_format;
    CSourceView m_source{};
    CRowBuffer<uint16_t> m_row;
};

} // namespace Detail
} // namespace KxApi
