// SPDX-License-Identifier: Apache-2.0

#include "FormatTable.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace KxApi
{
namespace
{

using Detail::CPixelFormatRow;
using Detail::kFormatCount;
using Detail::kFormats;
using Detail::kLayouts;

constexpr size_t kMaxSize = std::numeric_limits<size_t>::max();

size_t CheckedProduct(const char* name, size_t a, size_t b)
{
    if (b != 0 && a > kMaxSize / b)
        throw OUT_OF_RANGE_EXCEPTION("%s = %llu must be equal or smaller than Max = %llu", name,
                                     static_cast<unsigned long long>(a),
                                     static_cast<unsigned long long>(kMaxSize / b));
    return a * b;
}

class CKxPixelFormatInfo final : public IKxPixelFormatInfoInside
{
public:
    explicit constexpr CKxPixelFormatInfo(const CPixelFormatRow& row)
        : m_row(row)
    {}

    EKxPixelFormatNamingConvention_t GetPixelFormat() const override { return ToFormat(m_row); }
    GenICam::gcstring GetName() const override { return m_row.name; }
    bool IsColor() const override { return m_row.flags & Detail::kColor; }
    bool IsSingleComponent() const override { return m_row.flags & Detail::kSingle; }
    bool IsPolarized() const override { return m_row.flags & Detail::kPolarized; }
    size_t GetBitsPerPixel() const override { return m_row.bits; }
    size_t GetBitsPerPixelOfPlane() const override { return m_row.planeBits; }
    size_t GetIncrementX() const override { return m_row.incrementX; }
    size_t GetIncrementY() const override { return m_row.incrementY; }
    size_t GetStorageBits() const override { return m_row.storageBits; }
    size_t GetEffectiveBits() const override { return m_row.effectiveBits; }
    size_t GetComponentCount() const override { return m_row.componentCount; }
    size_t GetPlaneCount() const override { return kLayouts[m_row.layout].planes; }
    size_t GetDefaultAlignment() const override { return m_row.alignment; }

    EKxPixelFormatNamingConvention_t GetPixelFormatAtOffset(size_t x, size_t y) const override
    {
        const CPixelFormatRow* row = &m_row;
        if (x / row->patternStep % 2 != 0)
            row = &kFormats[row->patternRight];
        if (y / row->patternStep % 2 != 0)
            row = &kFormats[row->patternBelow];
        return ToFormat(*row);
    }

    EKxPixelComponentType_t GetComponentType(size_t component, size_t x, size_t y) const override
    {
        if (component >= m_row.componentCount)
            throw OUT_OF_RANGE_EXCEPTION("component = %zu of %s must be smaller than Max = %u", component,
                                         m_row.name, static_cast<unsigned>(m_row.componentCount));
        return Detail::ComponentType(m_row, component, x, y);
    }

    size_t GetLinePitch(size_t nWidth, size_t nAlignment) const override
    {
        // Eight pixels are always whole bytes, which keeps the bits of a line within size_t whenever its
        // bytes are.
        const size_t planeBits = m_row.planeBits;
        const size_t bytes =
            CheckedProduct("size_t nWidth", nWidth / 8, planeBits) + (nWidth % 8 * planeBits + 7) / 8;
        const size_t alignment = nAlignment == 0 ? m_row.alignment : nAlignment;
        const size_t units = bytes / alignment + (bytes % alignment != 0);
        return CheckedProduct("size_t nAlignment", alignment, units);
    }

    size_t GetImageSize(size_t nHeight, size_t nLinePitch) const override
    {
        const Detail::CPixelLayout& layout = kLayouts[m_row.layout];
        const size_t first = CheckedProduct("size_t nHeight", nHeight, nLinePitch);
        size_t size = first;
        for (size_t plane = 1; plane < layout.planes; ++plane) {
            const size_t bytes = PlaneSize(layout, plane, nHeight, nLinePitch);
            if (size > kMaxSize - bytes)
                throw OUT_OF_RANGE_EXCEPTION(
                    "size_t nHeight = %zu with a line pitch of %zu is beyond the memory", nHeight,
                    nLinePitch);
            size += bytes;
        }
        return size;
    }

private:
    static EKxPixelFormatNamingConvention_t ToFormat(const CPixelFormatRow& row)
    {
        return static_cast<EKxPixelFormatNamingConvention_t>(row.code);
    }

    static size_t PlaneSize(const Detail::CPixelLayout& layout, size_t plane, size_t height, size_t linePitch)
    {
        size_t lineShift = 0;
        for (const Detail::CComponentPlace& place : layout.places) {
            if (place.plane == plane)
                lineShift = place.lineShift;
        }
        const size_t lines = (height >> lineShift) + (height & ((size_t{1} << lineShift) - 1) ? 1 : 0);
        return lines * (linePitch / layout.chromaDivisor);
    }

    const CPixelFormatRow& m_row;
};

template <size_t... I>
constexpr std::array<CKxPixelFormatInfo, sizeof...(I)> MakeInfos(std::index_sequence<I...>)
{
    return {CKxPixelFormatInfo(kFormats[I])...};
}

const std::array<CKxPixelFormatInfo, kFormatCount> kInfos =
    MakeInfos(std::make_index_sequence<kFormatCount>());

} // namespace

const IKxPixelFormatInfo* GetIKxPixelFormatInfo(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const CPixelFormatRow* const row = Detail::FindFormat(ePixelFormat);
    return row ? &kInfos[static_cast<size_t>(row - kFormats)] : nullptr;
}

const IKxPixelFormatInfo* GetIKxPixelFormatInfoByName(const GenICam::gcstring& strName)
{
    const std::string_view name(strName.c_str(), strName.size());
    for (size_t i = 0; i < kFormatCount; ++i) {
        if (name == kFormats[i].name)
            return &kInfos[i];
    }
    return nullptr;
}

size_t GetIKxPixelFormatInfoCount() { return kFormatCount; }

const IKxPixelFormatInfo* GetIKxPixelFormatInfoByIndex(size_t nIndex)
{
    return nIndex < kFormatCount ? &kInfos[nIndex] : nullptr;
}

} // namespace KxApi
