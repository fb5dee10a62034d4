// SPDX-License-Identifier: Apache-2.0
// Work on single rows, compiled for several instruction sets and chosen at run time.
//
// Rows in work have one value per element, a row for each channel, and kRowPadding elements before and behind
// the pixels, which may be read and are overwritten: so no kernel needs code for the end of a row. Rows of
// images have no such room and are never touched outside their pixels.
#pragma once

#include "SourceFormats.h"

#include <cstddef>
#include <cstdint>

namespace KxApi
{
namespace Detail
{

inline constexpr size_t kRowPadding = 256;

/// Values of a line, as EPacking tells them (all but Table).
struct CPackedRow
{
    const uint8_t* pBytes;
    size_t nBytes; ///< that may be read
    size_t nValues;
    unsigned nBits; ///< of a value
};

/// Whether UnpackRow and SplitRow do anything: a processor without vectors has only the table of layouts.
bool HasUnpackKernels();

/// Puts the values of a line one behind the other. To bytes, only the high eight bits are kept.
void UnpackRow(EPacking packing, const CPackedRow& source, uint8_t* pRow);
void UnpackRow(EPacking packing, const CPackedRow& source, uint16_t* pRow);

/// Takes values that lie one behind the other apart: apRows are the rows of the channels in the order of
/// memory; Y, Cb, Cr for luma with chroma.
void SplitRow(EOrder order, const CPackedRow& source, uint8_t* const* apRows);
void SplitRow(EOrder order, const CPackedRow& source, uint16_t* const* apRows);

/// How the depth of values changes.
struct CDepthChange
{
    unsigned nUp;
    unsigned nDown;
    bool isCut; ///< v >> nDown, else v << nUp | v >> nDown
};

/// Three, four, or one rows become the pixels of a line.
void PackRow(const uint8_t* const* apRows, size_t nChannels, size_t nWidth, uint8_t* pPixels);
void PackRow(const uint16_t* const* apRows, size_t nChannels, size_t nWidth, uint16_t* pPixels);
/// Three rows whose depth changes on the way.
void PackRow(const uint16_t* const* apRows, size_t nWidth, const CDepthChange& change, uint16_t* pPixels);
/// Ten bits of each row from bit 0 of a little-endian word.
void PackRow10p32(const uint16_t* const* apRows, size_t nWidth, uint8_t* pPixels);

/// The lines around a line of a Bayer mosaic, mirrored at the borders, and two pixels to its sides likewise.
template <class T>
struct CMosaicRows
{
    const T* apRows[5]; ///< from two lines above to two below
    size_t nWidth;
    unsigned nMax;      ///< greatest value
    bool isChromaEven;  ///< whether red or blue stand in even columns of the line
    bool isUpperOfCell; ///< whether the line is the first of its squares
};

/// Results for a line: the colour that the line has besides green, green, and the other colour.
template <class T>
struct CColorRows
{
    T* pOwn;
    T* pGreen;
    T* pOther;
};

void DemosaicNearest(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result);
void DemosaicNearest(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result);
void DemosaicCell(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result);
void DemosaicCell(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result);
void DemosaicBilinear(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result);
void DemosaicBilinear(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result);
void DemosaicEdgeAware(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result);
void DemosaicEdgeAware(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result);
void DemosaicGradient(const CMosaicRows<uint8_t>& rows, const CColorRows<uint8_t>& result);
void DemosaicGradient(const CMosaicRows<uint16_t>& rows, const CColorRows<uint16_t>& result);
/// Green alone, one pixel to the sides included: what DemosaicDifference needs of three lines.
void DemosaicGreen(const CMosaicRows<uint8_t>& rows, uint8_t* pGreen);
void DemosaicGreen(const CMosaicRows<uint16_t>& rows, uint16_t* pGreen);
/// apGreen: green of the line above, the line, the line below.
void DemosaicDifference(const CMosaicRows<uint8_t>& rows, const uint8_t* const* apGreen,
                        const CColorRows<uint8_t>& result);
void DemosaicDifference(const CMosaicRows<uint16_t>& rows, const uint16_t* const* apGreen,
                        const CColorRows<uint16_t>& result);
void DemosaicMono(const CMosaicRows<uint8_t>& rows, uint8_t* pGrey);
void DemosaicMono(const CMosaicRows<uint16_t>& rows, uint16_t* pGrey);

/// Factors of a Ycc format, times 65536.
struct CYccMatrix
{
    int32_t nYOffset, nChromaOffset, nMax;
    int32_t nY, nCrToR, nCbToG, nCrToG, nCbToB;
};

/// In place: Y, Cb, Cr become R, G, B.
void YccToRgb(const CYccMatrix& matrix, uint8_t* const* apRows, size_t nWidth);
void YccToRgb(const CYccMatrix& matrix, uint16_t* const* apRows, size_t nWidth);
/// Y of any range brought to the full one, in place.
void YccToLuma(const CYccMatrix& matrix, uint8_t* pRow, size_t nWidth);
void YccToLuma(const CYccMatrix& matrix, uint16_t* pRow, size_t nWidth);
/// R, G, B to grey.
void RgbToLuma(const uint8_t* const* apRows, size_t nWidth, uint8_t* pGrey);
void RgbToLuma(const uint16_t* const* apRows, size_t nWidth, uint16_t* pGrey);
/// The same for pixels of three bytes, red or blue first; where HasUnpackKernels tells so.
void RgbToLuma(const CPackedRow& source, bool isRedFirst, uint8_t* pGrey);

/// In image memory, nothing behind nWidth is written.
void ChangeDepth(const uint8_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult);
void ChangeDepth(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint8_t* pResult);
void ChangeDepth(const uint16_t* pRow, size_t nWidth, const CDepthChange& change, uint16_t* pResult);

/// A table value for each value, by a table of 16 values; likewise.
void MapRowOf16(const uint8_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult);
/// A table value for each value; in image memory, nothing behind nWidth is written.
void MapRow(const uint8_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult);
void MapRow(const uint8_t* pRow, size_t nWidth, const uint16_t* pTable, uint16_t* pResult);
void MapRow(const uint16_t* pRow, size_t nWidth, const uint8_t* pTable, uint8_t* pResult);
void MapRow(const uint16_t* pRow, size_t nWidth, const uint16_t* pTable, uint16_t* pResult);

/// Values behind the four polarisers, times 4, for each pixel: 0, 45, 90 and 135 degrees.
struct CPolarizationRows
{
    const uint16_t* apRows[4];
    size_t nWidth;
    unsigned nMax; ///< greatest value, not times 4
};

/// The four values of each pixel of a line of a mosaic. Lines as CMosaicRows has them; anPlace as
/// CSourceFormat's anPolarizer; isOdd: whether it is an odd line.
void PolarizersBilinear(const uint16_t* const* apRows, bool isOdd, const uint8_t* anPlace, size_t nWidth,
                        uint16_t* const* apResult);
/// The four values of each square of two lines; nCells squares.
void PolarizersOfCells(const uint16_t* pUpper, const uint16_t* pLower, const uint8_t* anPlace, size_t nCells,
                       uint16_t* const* apResult);

/// Light behind a polariser: (S0 + cosAngle * S1 + sinAngle * S2) / 2.
void PolarizationAtAngle(const CPolarizationRows& rows, float cosAngle, float sinAngle, uint16_t* pResult);
void PolarizationView(const CPolarizationRows& rows, size_t nPolarizer, uint16_t* pResult);
void PolarizationIntensity(const CPolarizationRows& rows, uint16_t* pResult);
/// 65535 stands for 1.
void PolarizationDegree(const CPolarizationRows& rows, uint16_t* pResult);
/// 65536 would stand for 180 degrees.
void PolarizationAngle(const CPolarizationRows& rows, uint16_t* pResult);
/// R, G and B of eight bits: colours 0x00RRGGBB of a circle by the angle (those of PolarizationAngle), mixed
/// with black or white by the degree.
void PolarizationColor(const uint16_t* pDegree, const uint16_t* pAngle, size_t nWidth,
                       const uint32_t* pCircle, bool isDark, uint8_t* const* apResult);

} // namespace Detail
} // namespace KxApi
