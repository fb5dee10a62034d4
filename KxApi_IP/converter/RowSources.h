// SPDX-License-Identifier: Apache-2.0
// Stages that make the rows of a result: mono and RGB as they are, Ycc by its matrix, Bayer by its
// neighbours.
#pragma once

#include "CLineReader.h"
#include "CRowBuffer.h"
#include "RowKernels.h"

#include <KxApi_IP/KxConversionOptions.h>

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

    /// Line nLine of the result; it stays until the next call.
    virtual CRow<T> Get(size_t nLine) = 0;
};

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

    CRow<T> Get(size_t nLine) override
    {
        T* const apRows[] = {m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)};
        m_reader.Read(m_source, nLine, apRows);
        return {apRows[0], apRows[1], apRows[2], apRows[3]};
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
    CRow<uint8_t> Get(size_t nLine) override { return {m_source.pBytes + nLine * m_source.nLinePitch}; }

private:
    CSourceView m_source{};
};

/// RGB, or luma alone, from YUV and YCbCr.
template <class T>
class CYccRows final : public IRowSource<T>
{
public:
    CYccRows(const CSourceFormat& format, const CYccMatrix& matrix, bool bLumaOnly, size_t nWidth)
        : m_reader(format, nWidth)
        , m_matrix(matrix)
        , m_bLumaOnly(bLumaOnly)
        , m_rows(kMaxChannels, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_source = source; }

    CRow<T> Get(size_t nLine) override
    {
        T* const apRows[] = {m_rows.Row(0), m_rows.Row(1), m_rows.Row(2), m_rows.Row(3)};
        m_reader.Read(m_source, nLine, apRows);
        if (m_bLumaOnly)
            YccToLuma(m_matrix, apRows[0], m_source.nWidth);
        else
            YccToRgb(m_matrix, apRows, m_source.nWidth);
        return {apRows[0], apRows[1], apRows[2], apRows[3]};
    }

private:
    CLineReader m_reader;
    CYccMatrix m_matrix;
    bool m_bLumaOnly;
    CSourceView m_source{};
    CRowBuffer<T> m_rows;
};

/// Grey from R, G and B of another stage.
template <class T>
class CGreyRows final : public IRowSource<T>
{
public:
    CGreyRows(std::unique_ptr<IRowSource<T>> pColors, size_t nWidth)
        : m_pColors(std::move(pColors))
        , m_nWidth(nWidth)
        , m_row(1, nWidth)
    {}

    void Begin(const CSourceView& source) override { m_pColors->Begin(source); }

    CRow<T> Get(size_t nLine) override
    {
        const CRow<T> colors = m_pColors->Get(nLine);
        RgbToLuma(colors.data(), m_nWidth, m_row.Row(0));
        return {m_row.Row(0)};
    }

private:
    std::unique_ptr<IRowSource<T>> m_pColors;
    size_t m_nWidth;
    CRowBuffer<T> m_row;
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
    CBayerRows(Lines lines, CBayerPattern pattern, EKxBayerInterpolationMethod_t eMethod)
        : m_lines(std::move(lines))
        , m_pattern(pattern)
        , m_eMethod(eMethod)
        , m_ring(m_lines.GetWidth())
        , m_ringGreen(eMethod == KxBayerInterpolationMethod_Bilinear2 ? m_lines.GetWidth() : 1)
        , m_rows(3, m_lines.GetWidth())
    {}

    void Begin(const CSourceView& source) override
    {
        m_lines.Begin(source);
        m_ring.Clear();
        m_ringGreen.Clear();
    }

    CRow<T> Get(size_t nLine) override
    {
        const auto nMiddle = static_cast<ptrdiff_t>(nLine);
        if (m_eMethod == KxBayerInterpolationMethod_Off)
            return {MosaicLine(nMiddle)};
        const CMosaicRows<T> rows = Around(nMiddle);
        T* const pGreen = m_rows.Row(1);
        if (m_eMethod == KxBayerInterpolationMethod_Mono) {
            DemosaicMono(rows, pGreen);
            return {pGreen};
        }
        const bool bHasRed = (nLine & 1) == m_pattern.nRedY;
        T* const pRed = m_rows.Row(0);
        T* const pBlue = m_rows.Row(2);
        Demosaic(rows, nMiddle, {bHasRed ? pRed : pBlue, pGreen, bHasRed ? pBlue : pRed});
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
        const bool bHasRed = (nLine & 1) == m_pattern.nRedY;
        CMosaicRows<T> rows{};
        const bool bNeedsFar = m_eMethod == KxBayerInterpolationMethod_Bicubic;
        for (ptrdiff_t i = bNeedsFar ? -2 : -1; i <= (bNeedsFar ? 2 : 1); ++i)
            rows.apRows[i + 2] = MosaicLine(nLine + i);
        rows.nWidth = m_lines.GetWidth();
        rows.nMax = (1U << m_lines.GetBits()) - 1;
        rows.bIsChromaEven = m_pattern.nRedX == (bHasRed ? 0 : 1);
        rows.bIsUpperOfCell = nLine % 2 == 0;
        return rows;
    }

    /// Green of a line of the inside, for the method that needs it of three lines.
    const T* GreenLine(ptrdiff_t nLine)
    {
        return m_ringGreen.Get(nLine, m_lines.GetHeight(), [this](size_t nInside, T* pRow) {
            DemosaicGreen(Around(static_cast<ptrdiff_t>(nInside)), pRow);
        });
    }

    void Demosaic(const CMosaicRows<T>& rows, ptrdiff_t nLine, const CColorRows<T>& result)
    {
        switch (m_eMethod) {
        case KxBayerInterpolationMethod_NearestNeighbor:
            DemosaicNearest(rows, result);
            break;
        case KxBayerInterpolationMethod_NearestNeighbor2:
            DemosaicCell(rows, result);
            break;
        case KxBayerInterpolationMethod_Bilinear2: {
            const T* const apGreen[] = {GreenLine(nLine - 1), GreenLine(nLine), GreenLine(nLine + 1)};
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
    EKxBayerInterpolationMethod_t m_eMethod;
    CRowRing<T> m_ring;
    CRowRing<T> m_ringGreen;
    CRowBuffer<T> m_rows;
};

} // namespace Detail
} // namespace KxApi
