// SPDX-License-Identifier: Apache-2.0
// Stages that make the rows of a result: mono and RGB as they are, Ycc by its matrix, Bayer by its
// neighbours.
#pragma once

#include "CLineReader.h"
#include "CRowBuffer.h"
#include "RowKernels.h"

#include <KxApi_IP/KxConversionOptions.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <utility>

namespace KxApi
{
namespace Detail
{

/// A row of the result, channel by channel: grey, or R, G, B and alpha where the source has it.
template <class T>
using CRow = std::array<const T*, kMaxChannels>;

/// Makes rows of a result. One thread; all memory is had in the constructor.
template <class T>
class IRowSource
{
public:
    IRowSource() = default;
    IRowSource(const IRowSource&) = delete;
    IRowSource& operator=(const IRowSource&) = delete;
    virtual ~IRowSource() = default;

    /// Begins with another image of the same width.
    virtual void Begin(const CSourceView& source) = 0;

    /// Turns to a line.
    virtual void BeginLine(size_t nLine) = 0;

    /// nCount pixels of the line from nFirst on, a multiple of kPartWidth; they stay until the next call.
    /// Rows are made in parts so that the memory of the target takes one part in while the next is worked
    /// out.
    virtual CRow<T> Get(size_t nFirst, size_t nCount) = 0;
};

inline constexpr size_t kPartWidth = 512;

/// The channels from column nFirst on.
template <class T>
CRow<T> From(CRow<T> row, size_t nFirst)
{
    for (const T*& pChannel : row)
        pChannel = pChannel ? pChannel + nFirst : nullptr;
    return row;
}

/// The channels as the source has them.
template <class T>
class CPlainRows final : public IRowSource<T>
{
public:
    CPlainRows(const CSourceFormat& format, size_t nWidth)
        : m_reader(format, nWidth)
        , m_rows(kMaxChannels, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }

    void BeginLine(size_t nLine) override
    {
        T* const apRows[] = {m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)};
        m_reader.Read(m_source, nLine, apRows);
    }
    CRow<T> Get(size_t nFirst, size_t) override
    {
        return From<T>({m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)}, nFirst);
    }

private:
    CLineReader m_reader;
    CSourceView m_source{};
    CRowBuffer<T> m_rows;
};

/// The bytes of a source of one byte a value, without a copy: nothing behind them may be touched.
class CByteLines final : public IRowSource<uint8_t>
{
public:
    void Begin(const CSourceView& source) override { m_source = source; }
    void BeginLine(size_t nLine) override { m_pLine = m_source.pBytes + nLine * m_source.nLinePitch; }
    CRow<uint8_t> Get(size_t nFirst, size_t) override { return {m_pLine + nFirst}; }

private:
    CSourceView m_source{};
    const uint8_t* m_pLine = nullptr;
};

/// RGB, or luma alone, from YUV and YCbCr.
template <class T>
class CYccRows final : public IRowSource<T>
{
public:
    CYccRows(const CSourceFormat& format, const CYccMatrix& matrix, bool lumaOnly, size_t nWidth)
        : m_reader(format, nWidth)
        , m_matrix(matrix)
        , m_lumaOnly(lumaOnly)
        , m_rows(kMaxChannels, nWidth)
        , m_part(3, kPartWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }

    void BeginLine(size_t nLine) override
    {
        T* const apRows[] = {m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)};
        m_reader.Read(m_source, nLine, apRows);
    }
    CRow<T> Get(size_t nFirst, size_t nCount) override
    {
        // A part is changed in place, up to a vector's length behind its end: into a copy, as that belongs to
        // the next part.
        T* apRows[3];
        for (size_t k = 0; k < (m_lumaOnly ? 1 : 3); ++k) {
            apRows[k] = m_part.Row(k);
            std::copy_n(m_rows.Row(k) + nFirst, nCount, apRows[k]);
        }
        if (m_lumaOnly) {
            YccToLuma(m_matrix, apRows[0], nCount);
            return {apRows[0]};
        }
        YccToRgb(m_matrix, apRows, nCount);
        return {apRows[0], apRows[1], apRows[2]};
    }

private:
    CLineReader m_reader;
    CYccMatrix m_matrix;
    bool m_lumaOnly;
    CSourceView m_source{};
    CRowBuffer<T> m_rows;
    CRowBuffer<T> m_part;
};

/// Grey from R, G and B of another stage.
template <class T>
class CGreyRows final : public IRowSource<T>
{
public:
    explicit CGreyRows(std::unique_ptr<IRowSource<T>> pColors)
        : m_pColors(std::move(pColors))
        , m_row(1, kPartWidth)
    {}

    void Begin(const CSourceView& source) override { m_pColors->Begin(source); }

    void BeginLine(size_t nLine) override { m_pColors->BeginLine(nLine); }
    CRow<T> Get(size_t nFirst, size_t nCount) override
    {
        const CRow<T> colors = m_pColors->Get(nFirst, nCount);
        RgbToLuma(colors.data(), nCount, m_row.Row(0));
        return {m_row.Row(0)};
    }

private:
    std::unique_ptr<IRowSource<T>> m_pColors;
    CRowBuffer<T> m_row;
};

/// Grey from pixels of three bytes in the image itself.
class CGreyPixels final : public IRowSource<uint8_t>
{
public:
    explicit CGreyPixels(bool isRedFirst)
        : m_isRedFirst(isRedFirst)
        , m_row(1, kPartWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }
    void BeginLine(size_t nLine) override { m_pLine = m_source.pBytes + nLine * m_source.nLinePitch; }
    CRow<uint8_t> Get(size_t nFirst, size_t nCount) override
    {
        RgbToLuma({m_pLine + 3 * nFirst, 3 * nCount, 3 * nCount, 8}, m_isRedFirst, m_row.Row(0));
        return {m_row.Row(0)};
    }

private:
    bool m_isRedFirst;
    CSourceView m_source{};
    const uint8_t* m_pLine = nullptr;
    CRowBuffer<uint8_t> m_row;
};

/// The lines of a mosaic out of the image itself.
template <class T>
class CMosaicLines
{
public:
    CMosaicLines(const CSourceFormat& format, size_t nWidth)
        : m_reader(format, nWidth)
        , m_nWidth(nWidth)
    {}

    void Begin(const CSourceView& source) { m_source = source; }
    void Make(size_t nLine, T* pRow) { m_reader.Read(m_source, nLine, &pRow); }
    size_t GetWidth() const { return m_nWidth; }
    size_t GetHeight() const { return m_source.nHeight; }
    unsigned GetBits() const { return m_reader.GetBits<T>(); }

private:
    CLineReader m_reader;
    size_t m_nWidth;
    CSourceView m_source{};
};

/// Where the colours of a Bayer mosaic are.
struct CBayerPattern
{
    uint8_t nRedX;
    uint8_t nRedY;
};

/// Colours, or a grey, from a Bayer mosaic, whose lines Lines makes.
template <class T, class Lines>
class CBayerRows final : public IRowSource<T>
{
public:
    CBayerRows(Lines lines, CBayerPattern pattern, EKxBayerInterpolationMethod_t method)
        : m_lines(std::move(lines))
        , m_pattern(pattern)
        , m_method(method)
        , m_ring(m_lines.GetWidth())
        , m_ringGreen(method == KxBayerInterpolationMethod_Bilinear2 ? m_lines.GetWidth() : 1)
        , m_rows(3, kPartWidth)
    {}

    void Begin(const CSourceView& source) override
    {
        m_lines.Begin(source);
        m_ring.Clear();
        m_ringGreen.Clear();
    }

    void BeginLine(size_t nLine) override
    {
        const auto nMiddle = static_cast<ptrdiff_t>(nLine);
        m_hasRed = (nLine & 1) == m_pattern.nRedY;
        m_lineRows = Around(nMiddle);
        if (m_method == KxBayerInterpolationMethod_Bilinear2) {
            for (ptrdiff_t i = 0; i < 3; ++i)
                m_apGreen[i] = GreenLine(nMiddle + i - 1);
        }
    }

    CRow<T> Get(size_t nFirst, size_t nCount) override
    {
        if (m_method == KxBayerInterpolationMethod_Off)
            return {m_lineRows.apRows[2] + nFirst};
        CMosaicRows<T> rows = m_lineRows;
        for (const T*& pRow : rows.apRows)
            pRow = pRow ? pRow + nFirst : nullptr;
        rows.nWidth = nCount;
        T* const pGreen = m_rows.Row(1);
        if (m_method == KxBayerInterpolationMethod_Mono) {
            DemosaicMono(rows, pGreen);
            return {pGreen};
        }
        T* const pRed = m_rows.Row(0);
        T* const pBlue = m_rows.Row(2);
        Demosaic(rows, nFirst, {m_hasRed ? pRed : pBlue, pGreen, m_hasRed ? pBlue : pRed});
        return {pRed, pGreen, pBlue};
    }

private:
    const T* MosaicLine(ptrdiff_t nLine)
    {
        return m_ring.Get(nLine, m_lines.GetHeight(),
                          [this](size_t nInside, T* pRow) { m_lines.Make(nInside, pRow); });
    }

    CMosaicRows<T> Around(ptrdiff_t nLine)
    {
        const bool hasRed = (nLine & 1) == m_pattern.nRedY;
        CMosaicRows<T> rows{};
        const bool needsFar = m_method == KxBayerInterpolationMethod_Bicubic;
        for (ptrdiff_t i = needsFar ? -2 : -1; i <= (needsFar ? 2 : 1); ++i)
            rows.apRows[i + 2] = MosaicLine(nLine + i);
        rows.nWidth = m_lines.GetWidth();
        rows.nMax = (1U << m_lines.GetBits()) - 1;
        rows.isChromaEven = m_pattern.nRedX == (hasRed ? 0 : 1);
        rows.isUpperOfCell = nLine % 2 == 0;
        return rows;
    }

    /// Green of a line of the inside, for the method that needs it of three lines.
    const T* GreenLine(ptrdiff_t nLine)
    {
        return m_ringGreen.Get(nLine, m_lines.GetHeight(), [this](size_t nInside, T* pRow) {
            DemosaicGreen(Around(static_cast<ptrdiff_t>(nInside)), pRow);
        });
    }

    void Demosaic(const CMosaicRows<T>& rows, size_t nFirst, const CColorRows<T>& result)
    {
        switch (m_method) {
        case KxBayerInterpolationMethod_NearestNeighbor:
            DemosaicNearest(rows, result);
            break;
        case KxBayerInterpolationMethod_NearestNeighbor2:
            DemosaicCell(rows, result);
            break;
        case KxBayerInterpolationMethod_Bilinear2: {
            const T* const apGreen[] = {m_apGreen[0] + nFirst, m_apGreen[1] + nFirst, m_apGreen[2] + nFirst};
            DemosaicDifference(rows, apGreen, result);
            break;
        }
        case KxBayerInterpolationMethod_Bilinear3:
            DemosaicEdgeAware(rows, result);
            break;
        case KxBayerInterpolationMethod_Bicubic:
            DemosaicGradient(rows, result);
            break;
        default:
            DemosaicBilinear(rows, result);
            break;
        }
    }

    Lines m_lines;
    CBayerPattern m_pattern;
    EKxBayerInterpolationMethod_t m_method;
    CRowRing<T> m_ring;
    CRowRing<T> m_ringGreen;
    CRowBuffer<T> m_rows; ///< of a part
    bool m_hasRed = false;
    CMosaicRows<T> m_lineRows{};
    const T* m_apGreen[3] = {};
};

} // namespace Detail
} // namespace KxApi
