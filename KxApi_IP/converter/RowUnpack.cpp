// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowUnpack.cpp"
#include "RowKernels.h"

#include <hwy/foreach_target.h> // compiles this file once for each instruction set
#include <hwy/highway.h>

#include <algorithm>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace KxApi
{
namespace Detail
{
namespace HWY_NAMESPACE
{

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

// Without vectors the table of layouts is as good.
bool HasUnpack() { return false; }
void UnpackToBytes(EPacking, const CPackedRow&, uint8_t* const*) {}
void UnpackToWords(EPacking, const CPackedRow&, uint16_t* const*) {}

#else

constexpr size_t kMaxRead = 1024;

/// Runs `body(bytes, x)` over a line in steps of nPixels pixels, of which it reads nRead bytes. The end of
/// the line is read from a copy with room behind it.
template <class Body>
HWY_INLINE void ForSteps(const CPackedRow& source, size_t nPixels, size_t nStep, size_t nRead,
                         const Body& body)
{
    size_t x = 0;
    size_t nOffset = 0;
    for (; x + nPixels <= source.nWidth && nOffset + nRead <= source.nBytes; x += nPixels, nOffset += nStep)
        body(source.pBytes + nOffset, x);
    uint8_t anCopy[kMaxRead];
    for (; x < source.nWidth; x += nPixels, nOffset += nStep) {
        const size_t nLeft = std::min(source.nBytes - nOffset, nRead);
        std::memcpy(anCopy, source.pBytes + nOffset, nLeft);
        std::memset(anCopy + nLeft, 0, nRead - nLeft);
        body(anCopy, x);
    }
}

template <class D16, class V16>
HWY_INLINE void StoreCut(D16 d16, V16 v, uint8_t* pResult)
{
    // Values are below 256, so the signed conversion is exact.
    const hn::RebindToSigned<D16> dSigned;
    const hn::Rebind<uint8_t, D16> d8;
    hn::StoreU(hn::DemoteTo(d8, hn::BitCast(dSigned, v)), d8, pResult);
    (void)d16;
}

void Words(const CPackedRow& source, uint16_t* pRow)
{
    const hn::ScalableTag<uint16_t> d;
    const size_t nLanes = hn::Lanes(d);
    const auto mask = hn::Set(d, static_cast<uint16_t>((1U << source.nBits) - 1));
    ForSteps(source, nLanes, 2 * nLanes, 2 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        const auto v = hn::LoadU(hn::Repartition<uint8_t, decltype(d)>(), pBytes);
        hn::StoreU(hn::And(hn::BitCast(d, v), mask), d, pRow + x);
    });
}

void Words(const CPackedRow& source, uint8_t* pRow)
{
    const hn::ScalableTag<uint16_t> d;
    const size_t nLanes = hn::Lanes(d);
    const auto mask = hn::Set(d, static_cast<uint16_t>((1U << source.nBits) - 1));
    const int nShift = static_cast<int>(source.nBits) - 8;
    ForSteps(source, nLanes, 2 * nLanes, 2 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        const auto v = hn::LoadU(hn::Repartition<uint8_t, decltype(d)>(), pBytes);
        StoreCut(d, hn::ShiftRightSame(hn::And(hn::BitCast(d, v), mask), nShift), pRow + x);
    });
}

/// Eight values of kBits bits out of consecutive bits, each moved to the top of its 16 bits.
template <unsigned kBits, class D16>
HWY_INLINE hn::Vec<D16> EightOfStream(D16 d16, const uint8_t* pBytes)
{
    const hn::Repartition<uint8_t, D16> d8;
    // Each pair of bytes holds a value, at one of four bit offsets; the product moves it up.
    alignas(16) static constexpr uint8_t kPairs10[16] = {0, 1, 1, 2, 2, 3, 3, 4, 5, 6, 6, 7, 7, 8, 8, 9};
    alignas(16) static constexpr uint16_t kFactors10[8] = {64, 16, 4, 1, 64, 16, 4, 1};
    alignas(16) static constexpr uint8_t kPairs12[16] = {0, 1, 1, 2, 3, 4, 4, 5, 6, 7, 7, 8, 9, 10, 10, 11};
    alignas(16) static constexpr uint16_t kFactors12[8] = {16, 1, 16, 1, 16, 1, 16, 1};
    const auto pairs = hn::Load(d8, kBits == 10 ? kPairs10 : kPairs12);
    const auto factors = hn::Load(d16, kBits == 10 ? kFactors10 : kFactors12);
    return hn::Mul(hn::BitCast(d16, hn::TableLookupBytes(hn::LoadU(d8, pBytes), pairs)), factors);
}

template <class T>
HWY_INLINE void Stream10(const CPackedRow& source, T* pRow)
{
    const hn::FixedTag<uint16_t, 8> d;
    ForSteps(source, 8, 10, 16, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        const auto v = EightOfStream<10>(d, pBytes);
        if constexpr (sizeof(T) == 2)
            hn::StoreU(hn::ShiftRight<6>(v), d, pRow + x);
        else
            StoreCut(d, hn::ShiftRight<8>(v), pRow + x);
    });
}

void Stream12(const CPackedRow& source, uint16_t* pRow)
{
    const hn::FixedTag<uint16_t, 8> d;
    ForSteps(source, 8, 12, 16, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::StoreU(hn::ShiftRight<4>(EightOfStream<12>(d, pBytes)), d, pRow + x);
    });
}

void Stream12(const CPackedRow& source, uint8_t* pRow)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    ForSteps(source, 2 * nLanes, 3 * nLanes, 3 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> b0, b1, b2;
        hn::LoadInterleaved3(d, pBytes, b0, b1, b2);
        hn::StoreInterleaved2(hn::Or(hn::ShiftRight<4>(b0), hn::ShiftLeft<4>(b1)), b2, d, pRow + x);
    });
}

/// kLow: low bits that lie in the middle byte.
template <int kLow>
HWY_INLINE void Halves(const CPackedRow& source, uint16_t* pRow)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    const auto low = hn::Set(d, static_cast<uint8_t>((1 << kLow) - 1));
    ForSteps(source, 2 * nLanes, 3 * nLanes, 3 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> b0, b1, b2;
        hn::LoadInterleaved3(d, pBytes, b0, b1, b2);
        const auto low0 = hn::Or(hn::ShiftLeft<kLow>(b0), hn::And(b1, low));
        const auto low1 = hn::Or(hn::ShiftLeft<kLow>(b2), hn::And(hn::ShiftRight<4>(b1), low));
        hn::StoreInterleaved4(low0, hn::ShiftRight<8 - kLow>(b0), low1, hn::ShiftRight<8 - kLow>(b2), d,
                              reinterpret_cast<uint8_t*>(pRow + x));
    });
}

void Halves(const CPackedRow& source, uint8_t* pRow)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    ForSteps(source, 2 * nLanes, 3 * nLanes, 3 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> b0, b1, b2;
        hn::LoadInterleaved3(d, pBytes, b0, b1, b2);
        hn::StoreInterleaved2(b0, b2, d, pRow + x);
    });
}

void Bytes3(const CPackedRow& source, uint8_t* const* apRows)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    ForSteps(source, nLanes, 3 * nLanes, 3 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2;
        hn::LoadInterleaved3(d, pBytes, v0, v1, v2);
        hn::StoreU(v0, d, apRows[0] + x);
        hn::StoreU(v1, d, apRows[1] + x);
        hn::StoreU(v2, d, apRows[2] + x);
    });
}

void Bytes4(const CPackedRow& source, uint8_t* const* apRows)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    ForSteps(source, nLanes, 4 * nLanes, 4 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2, v3;
        hn::LoadInterleaved4(d, pBytes, v0, v1, v2, v3);
        hn::StoreU(v0, d, apRows[0] + x);
        hn::StoreU(v1, d, apRows[1] + x);
        hn::StoreU(v2, d, apRows[2] + x);
        hn::StoreU(v3, d, apRows[3] + x);
    });
}

/// kFirstLuma: the place of the first luma among the four bytes.
template <int kFirstLuma>
HWY_INLINE void LumaChroma(const CPackedRow& source, uint8_t* const* apRows)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    ForSteps(source, 2 * nLanes, 4 * nLanes, 4 * nLanes, [&](const uint8_t* pBytes, size_t x) HWY_ATTR {
        hn::Vec<decltype(d)> v0, v1, v2, v3;
        hn::LoadInterleaved4(d, pBytes, v0, v1, v2, v3);
        const auto cb = kFirstLuma == 0 ? v1 : v0;
        const auto cr = kFirstLuma == 0 ? v3 : v2;
        hn::StoreInterleaved2(kFirstLuma == 0 ? v0 : v1, kFirstLuma == 0 ? v2 : v3, d, apRows[0] + x);
        hn::StoreInterleaved2(cb, cb, d, apRows[1] + x);
        hn::StoreInterleaved2(cr, cr, d, apRows[2] + x);
    });
}

/// Values of two bytes each, one channel after the other; the compiler makes vectors of it.
template <size_t kChannels, class T>
HWY_INLINE void WordsOfChannels(const CPackedRow& source, T* const* apRows)
{
    const unsigned nMask = (1U << source.nBits) - 1;
    const unsigned nShift = sizeof(T) == 1 ? source.nBits - 8 : 0;
    for (size_t k = 0; k < kChannels; ++k) {
        T* HWY_RESTRICT const pRow = apRows[k];
        const uint8_t* HWY_RESTRICT const pBytes = source.pBytes + 2 * k;
        for (size_t x = 0; x < source.nWidth; ++x) {
            uint16_t nValue;
            std::memcpy(&nValue, pBytes + 2 * kChannels * x, sizeof(nValue));
            pRow[x] = static_cast<T>((nValue & nMask) >> nShift);
        }
    }
}

bool HasUnpack() { return true; }

void UnpackToBytes(EPacking ePacking, const CPackedRow& source, uint8_t* const* apRows)
{
    switch (ePacking) {
    case EPacking::Bytes:
        std::memcpy(apRows[0], source.pBytes, source.nWidth);
        break;
    case EPacking::Words:
        Words(source, apRows[0]);
        break;
    case EPacking::Stream10:
        Stream10(source, apRows[0]);
        break;
    case EPacking::Stream12:
        Stream12(source, apRows[0]);
        break;
    case EPacking::Halves10:
    case EPacking::Halves12:
        Halves(source, apRows[0]);
        break;
    case EPacking::Bytes3:
        Bytes3(source, apRows);
        break;
    case EPacking::Bytes4:
        Bytes4(source, apRows);
        break;
    case EPacking::Words3:
        WordsOfChannels<3>(source, apRows);
        break;
    case EPacking::Words4:
        WordsOfChannels<4>(source, apRows);
        break;
    case EPacking::Luma0Chroma1:
        LumaChroma<0>(source, apRows);
        break;
    case EPacking::Chroma0Luma1:
        LumaChroma<1>(source, apRows);
        break;
    case EPacking::Table:
        break;
    }
}

void UnpackToWords(EPacking ePacking, const CPackedRow& source, uint16_t* const* apRows)
{
    switch (ePacking) {
    case EPacking::Bytes:
        std::copy_n(source.pBytes, source.nWidth, apRows[0]);
        break;
    case EPacking::Words:
        Words(source, apRows[0]);
        break;
    case EPacking::Stream10:
        Stream10(source, apRows[0]);
        break;
    case EPacking::Stream12:
        Stream12(source, apRows[0]);
        break;
    case EPacking::Halves10:
        Halves<2>(source, apRows[0]);
        break;
    case EPacking::Halves12:
        Halves<4>(source, apRows[0]);
        break;
    case EPacking::Words3:
        WordsOfChannels<3>(source, apRows);
        break;
    case EPacking::Words4:
        WordsOfChannels<4>(source, apRows);
        break;
    default: // what has 8 bits in several channels is worked on in bytes
        break;
    }
}

#endif

} // namespace HWY_NAMESPACE
} // namespace Detail
} // namespace KxApi
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace KxApi
{
namespace Detail
{

HWY_EXPORT(HasUnpack);
HWY_EXPORT(UnpackToBytes);
HWY_EXPORT(UnpackToWords);

bool HasUnpackKernels() { return HWY_DYNAMIC_DISPATCH(HasUnpack)(); }

void UnpackRow(EPacking ePacking, const CPackedRow& source, uint8_t* const* apRows)
{
    HWY_DYNAMIC_DISPATCH(UnpackToBytes)(ePacking, source, apRows);
}

void UnpackRow(EPacking ePacking, const CPackedRow& source, uint16_t* const* apRows)
{
    HWY_DYNAMIC_DISPATCH(UnpackToWords)(ePacking, source, apRows);
}

} // namespace Detail
} // namespace KxApi
#endif
