// SPDX-License-Identifier: Apache-2.0
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "converter/RowUnpack.cpp"
#include "RowKernels.h"

// The order matters.
// clang-format off
#include <hwy/foreach_target.h> // compiles this file once for each instruction set
#include <hwy/highway.h>

#include "RowSteps-inl.h"
// clang-format on

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
template <class T>
constexpr Kernel<T*> kUnpack[12] = {};

#else

/// Values of 16-bit lanes that fit into T.
template <class D16, class V16, class T>
HWY_INLINE void Store(D16 d16, V16 v, T* pResult)
{
    if constexpr (sizeof(T) == 2) {
        hn::StoreU(v, d16, pResult);
    } else {
        // Values are below 256, so the signed conversion is exact.
        const hn::RebindToSigned<D16> dSigned;
        const hn::Rebind<uint8_t, D16> d8;
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(dSigned, v)), d8, pResult);
    }
}

template <class T>
HWY_INLINE void Bytes(const CPackedRow& source, T* HWY_RESTRICT pRow)
{
    for (size_t i = 0; i < source.nValues; ++i)
        pRow[i] = source.pBytes[i];
}

template <class T>
HWY_INLINE void Words(const CPackedRow& source, T* pRow)
{
    const hn::ScalableTag<uint16_t> d;
    const size_t nLanes = hn::Lanes(d);
    const auto mask = hn::Set(d, static_cast<uint16_t>((1U << source.nBits) - 1));
    const int nShift = sizeof(T) == 1 ? static_cast<int>(source.nBits) - 8 : 0;
    ForSteps(source, nLanes, 2 * nLanes, 2 * nLanes, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        const auto v = hn::LoadU(hn::Repartition<uint8_t, decltype(d)>(), pBytes);
        Store(d, hn::ShiftRightSame(hn::And(hn::BitCast(d, v), mask), nShift), pRow + nAt);
    });
}

/// 1, 2 or 4 bits, low ones first.
template <unsigned kBits, class T>
HWY_INLINE void Bits(const CPackedRow& source, T* HWY_RESTRICT pRow)
{
    for (size_t i = 0; i < source.nValues; ++i)
        pRow[i] = source.pBytes[i * kBits / 8] >> (i * kBits % 8) & ((1U << kBits) - 1);
}

template <>
HWY_INLINE void Bits<1, uint8_t>(const CPackedRow& source, uint8_t* pRow)
{
    const hn::FixedTag<uint8_t, 16> d;
    alignas(16) static constexpr uint8_t kBytes[16] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1};
    alignas(16) static constexpr uint8_t kMasks[16] = {1, 2, 4, 8, 16, 32, 64, 128,
                                                       1, 2, 4, 8, 16, 32, 64, 128};
    const auto masks = hn::Load(d, kMasks);
    ForSteps(source, 128, 16, 16, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        const auto v = hn::LoadU(d, pBytes);
        auto places = hn::Load(d, kBytes);
        for (size_t i = 0; i < 128; i += 16) {
            const auto bits = hn::And(hn::TableLookupBytes(v, places), masks);
            hn::StoreU(hn::Min(bits, hn::Set(d, uint8_t{1})), d, pRow + nAt + i);
            places = hn::Add(places, hn::Set(d, uint8_t{2}));
        }
    });
}

/// Where values of a stream lie: two bytes that hold one, and the factor that moves it to the top of them.
struct CPairs
{
    alignas(16) uint8_t anBytes[16];
    alignas(16) uint16_t anFactors[8];
};

/// Of values of kBits, the upper kTaken ones; eight values take kBits bytes.
template <unsigned kBits, unsigned kTaken>
constexpr CPairs MakePairs()
{
    CPairs pairs{};
    for (unsigned i = 0; i < 8; ++i) {
        const unsigned nBit = i * kBits + kBits - kTaken;
        // The last byte of a value may be the last that is read.
        pairs.anBytes[2 * i] = static_cast<uint8_t>(nBit / 8);
        pairs.anBytes[2 * i + 1] = static_cast<uint8_t>(nBit / 8 + 1);
        pairs.anFactors[i] = static_cast<uint16_t>(1U << (16 - kTaken - nBit % 8));
    }
    return pairs;
}

/// A vector whose blocks begin at distances of kDistance bytes.
template <size_t kDistance, class D8>
HWY_INLINE hn::Vec<D8> LoadBlocks(D8 d8, const uint8_t* pBytes)
{
    if constexpr (hn::MaxLanes(D8()) == 32) {
        const hn::Half<D8> dBlock;
        return hn::Combine(d8, hn::LoadU(dBlock, pBytes + kDistance), hn::LoadU(dBlock, pBytes));
    } else {
        return hn::LoadU(d8, pBytes);
    }
}

/// Values one behind the other, those of T with the upper bits that it holds; they have to lie in two bytes.
template <unsigned kBits, class T>
HWY_INLINE void Stream(const CPackedRow& source, T* pRow)
{
    constexpr unsigned kTaken = sizeof(T) == 1 ? 8 : kBits;
    static constexpr CPairs kPairs = MakePairs<kBits, kTaken>();
    const hn::CappedTag<uint16_t, 16> d;
    const hn::Repartition<uint8_t, decltype(d)> d8;
    constexpr size_t kLanes = hn::MaxLanes(d);
    const auto places = hn::LoadDup128(d8, kPairs.anBytes);
    const auto factors = hn::LoadDup128(d, kPairs.anFactors);
    constexpr size_t kStep = kLanes / 8 * kBits;
    ForSteps(source, kLanes, kStep, kStep - kBits + 16, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        const auto bytes = LoadBlocks<kBits>(d8, pBytes);
        const auto pairs = hn::BitCast(d, hn::TableLookupBytes(bytes, places));
        Store(d, hn::ShiftRight<16 - kTaken>(hn::Mul(pairs, factors)), pRow + nAt);
    });
}

/// Values of 14 bits may lie in three bytes.
template <>
HWY_INLINE void Stream<14, uint16_t>(const CPackedRow& source, uint16_t* pRow)
{
    const hn::FixedTag<uint32_t, 4> d;
    const hn::FixedTag<uint8_t, 16> d8;
    const hn::Rebind<uint16_t, decltype(d)> d16;
    alignas(16) static constexpr uint8_t kBytes[16] = {0, 1, 2, 3, 1, 2, 3, 4, 3, 4, 5, 6, 5, 6, 7, 8};
    alignas(16) static constexpr uint32_t kFactors[4] = {1U << 18, 1U << 12, 1U << 14, 1U << 16};
    const auto places = hn::Load(d8, kBytes);
    const auto factors = hn::Load(d, kFactors);
    ForSteps(source, 4, 7, 16, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        const auto bytes = hn::TableLookupBytes(hn::LoadU(d8, pBytes), places);
        const auto values = hn::ShiftRight<18>(hn::Mul(hn::BitCast(d, bytes), factors));
        hn::StoreU(hn::DemoteTo(d16, hn::BitCast(hn::RebindToSigned<decltype(d)>(), values)), d16,
                   pRow + nAt);
    });
}

/// Two values in three bytes; kLow: low bits of each that lie in the middle one.
template <int kLow, class T>
HWY_INLINE void Halves(const CPackedRow& source, T* pRow)
{
    const hn::ScalableTag<uint8_t> d;
    const size_t nLanes = hn::Lanes(d);
    const auto low = hn::Set(d, static_cast<uint8_t>((1 << kLow) - 1));
    ForSteps(source, 2 * nLanes, 3 * nLanes, 3 * nLanes, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        hn::Vec<decltype(d)> b0, b1, b2;
        hn::LoadInterleaved3(d, pBytes, b0, b1, b2);
        if constexpr (sizeof(T) == 1) {
            hn::StoreInterleaved2(b0, b2, d, pRow + nAt);
        } else {
            const auto low0 = hn::Or(hn::ShiftLeft<kLow>(b0), hn::And(b1, low));
            const auto low1 = hn::Or(hn::ShiftLeft<kLow>(b2), hn::And(hn::ShiftRight<4>(b1), low));
            hn::StoreInterleaved4(low0, hn::ShiftRight<8 - kLow>(b0), low1, hn::ShiftRight<8 - kLow>(b2), d,
                                  reinterpret_cast<uint8_t*>(pRow + nAt));
        }
    });
}

/// Three values of 10 bits in a word of 32, the two bits above as a fourth.
template <class T>
HWY_INLINE void Tens(const CPackedRow& source, T* pRow)
{
    const hn::ScalableTag<uint32_t> d;
    const size_t nLanes = hn::Lanes(d);
    const hn::Repartition<uint8_t, decltype(d)> d8;
    const hn::Repartition<T, decltype(d)> dT;
    const auto ten = hn::Set(d, 0x3FFU);
    const auto byte = hn::Set(d, 0xFFU);
    ForSteps(source, 4 * nLanes, 4 * nLanes, 4 * nLanes, [&](const uint8_t* pBytes, size_t nAt) HWY_ATTR {
        const auto v = hn::BitCast(d, hn::LoadU(d8, pBytes));
        if constexpr (sizeof(T) == 1) {
            const auto first = hn::And(hn::ShiftRight<2>(v), byte);
            const auto second = hn::ShiftLeft<8>(hn::And(hn::ShiftRight<12>(v), byte));
            const auto third = hn::ShiftLeft<16>(hn::And(hn::ShiftRight<22>(v), byte));
            hn::StoreU(hn::BitCast(dT, hn::Or(hn::Or(first, second), third)), dT, pRow + nAt);
        } else {
            const auto front =
                hn::Or(hn::And(v, ten), hn::ShiftLeft<16>(hn::And(hn::ShiftRight<10>(v), ten)));
            const auto back =
                hn::Or(hn::And(hn::ShiftRight<20>(v), ten), hn::ShiftLeft<16>(hn::ShiftRight<30>(v)));
            hn::StoreInterleaved2(front, back, d, reinterpret_cast<uint32_t*>(pRow + nAt));
        }
    });
}

bool HasUnpack() { return true; }

template <class T>
constexpr Kernel<T*> kUnpack[] = {
    nullptr,       Bytes<T>,      Words<T>,      Bits<1, T>,   Bits<2, T>,   Bits<4, T>,
    Stream<10, T>, Stream<12, T>, Stream<14, T>, Halves<2, T>, Halves<4, T>, Tens<T>,
};

#endif

void UnpackToBytes(EPacking packing, const CPackedRow& source, uint8_t* pRow)
{
    RunKernel(kUnpack<uint8_t>, packing, source, pRow);
}
void UnpackToWords(EPacking packing, const CPackedRow& source, uint16_t* pRow)
{
    RunKernel(kUnpack<uint16_t>, packing, source, pRow);
}

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

void UnpackRow(EPacking packing, const CPackedRow& source, uint8_t* pRow)
{
    HWY_DYNAMIC_DISPATCH(UnpackToBytes)(packing, source, pRow);
}

void UnpackRow(EPacking packing, const CPackedRow& source, uint16_t* pRow)
{
    HWY_DYNAMIC_DISPATCH(UnpackToWords)(packing, source, pRow);
}

} // namespace Detail
} // namespace KxApi
#endif
