// SPDX-License-Identifier: Apache-2.0
#include "image/DisplayImageRegisters_qt.h"

#include "image/KxDisplayImageWnd_qt.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace KxApi
{
namespace
{

using CWnd = CKxDisplayImageWnd;

/// A register; without pWrite it is read only, whatever its node says.
struct CRow
{
    int64_t nAddress;
    int64_t nLength;
    void (*pRead)(CWnd&, void*);
    void (*pWrite)(CWnd&, const void*);
};

template <class XML_TYPE, auto kGet>
void Get(CWnd& window, void* pBuffer)
{
    const auto value = static_cast<XML_TYPE>((window.*kGet)());
    std::memcpy(pBuffer, &value, sizeof(value));
}

template <class XML_TYPE, const auto& kValue>
void GetConstant(CWnd&, void* pBuffer)
{
    const XML_TYPE value = kValue;
    std::memcpy(pBuffer, &value, sizeof(value));
}

template <class T>
void CallSetter(CWnd& window, void (CWnd::*pSet)(T, bool), T value)
{
    (window.*pSet)(value, false);
}

template <class T>
T ArgumentOf(void (CWnd::*)(T, bool));

template <class XML_TYPE, auto kSet>
void Set(CWnd& window, const void* pBuffer)
{
    XML_TYPE value;
    std::memcpy(&value, pBuffer, sizeof(value));
    CallSetter(window, kSet, static_cast<decltype(ArgumentOf(kSet))>(value));
}

template <class XML_TYPE, auto kGet, auto kSet>
constexpr CRow Setting(int64_t nAddress)
{
    return {nAddress, sizeof(XML_TYPE), &Get<XML_TYPE, kGet>, &Set<XML_TYPE, kSet>};
}

template <class XML_TYPE, auto kGet>
constexpr CRow State(int64_t nAddress)
{
    return {nAddress, sizeof(XML_TYPE), &Get<XML_TYPE, kGet>, nullptr};
}

template <class XML_TYPE, const auto& kValue>
constexpr CRow Constant(int64_t nAddress)
{
    return {nAddress, sizeof(XML_TYPE), &GetConstant<XML_TYPE, kValue>, nullptr};
}

// clang-format off
constexpr CRow kRows[] = {
    Setting<uint32_t, &CWnd::GetPreviewPixelFormatMode, &CWnd::mSetPreviewPixelFormatMode>(0x2000),
    Setting<uint32_t, &CWnd::GetScrollHPosition, &CWnd::mSetScrollHPosition>(0x2010),
    State<uint32_t, &CWnd::GetScrollHMax>(0x2014),
    Setting<uint32_t, &CWnd::GetScrollVPosition, &CWnd::mSetScrollVPosition>(0x2018),
    State<uint32_t, &CWnd::GetScrollVMax>(0x201C),
    Setting<uint32_t, &CWnd::GetRefreshInterval, &CWnd::mSetRefreshInterval>(0x2020),
    Constant<uint32_t, kMinRefreshInterval>(0x2024),
    Constant<uint32_t, kMaxRefreshInterval>(0x2028),
    Setting<uint32_t, &CWnd::GetZoomMode, &CWnd::mSetZoomMode>(0x2030),
    Setting<uint32_t, &CWnd::GetStretchMode, &CWnd::mSetStretchMode>(0x2034),
    Setting<double, &CWnd::GetManualZoomMagnification, &CWnd::mSetManualZoomMagnification>(0x2038),
    Constant<double, kMinMagnification>(0x2040),
    Constant<double, kMaxMagnification>(0x2048),
    Setting<uint32_t, &CWnd::GetBackgroundStyle, &CWnd::mSetBackgroundStyle>(0x2060),
    Setting<uint32_t, &CWnd::GetForegroundColor, &CWnd::mSetForegroundColor>(0x2064),
    Setting<uint32_t, &CWnd::GetBackgroundColor, &CWnd::mSetBackgroundColor>(0x2068),
    Setting<uint32_t, &CWnd::GetBayerInterpolationMethodForStillImageFile,
            &CWnd::mSetBayerInterpolationMethodForStillImageFile>(0x206C),
    Setting<uint32_t, &CWnd::GetColorMapType, &CWnd::mSetColorMapType>(0x2080),
    Setting<uint32_t, &CWnd::GetColorMapInversion, &CWnd::mSetColorMapInversion>(0x2084),
    Setting<uint32_t, &CWnd::GetColorMapPhase, &CWnd::mSetColorMapPhase>(0x2088),
};
// clang-format on

constexpr bool RowsAreSorted()
{
    for (size_t i = 1; i < std::size(kRows); ++i) {
        if (kRows[i].nAddress < kRows[i - 1].nAddress + kRows[i - 1].nLength)
            return false;
    }
    return true;
}
static_assert(RowsAreSorted());

/// The row of an address, null when there is none.
const CRow* Find(int64_t nAddress, int64_t nLength)
{
    const CRow* const pRow =
        std::lower_bound(std::begin(kRows), std::end(kRows), nAddress,
                         [](const CRow& row, int64_t nWanted) { return row.nAddress < nWanted; });
    if (pRow == std::end(kRows) || pRow->nAddress != nAddress)
        return nullptr;
    if (nLength < pRow->nLength)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", "Length",
                                     static_cast<long long>(nLength), static_cast<long long>(pRow->nLength));
    return pRow;
}

} // namespace

bool ReadDisplayImageRegister(CKxDisplayImageWnd& window, unsigned char* pBuffer, int64_t nAddress,
                              int64_t* pnLength)
{
    const CRow* const pRow = Find(nAddress, *pnLength);
    if (!pRow)
        return false;
    pRow->pRead(window, pBuffer);
    *pnLength = pRow->nLength;
    return true;
}

bool WriteDisplayImageRegister(CKxDisplayImageWnd& window, const unsigned char* pBuffer, int64_t nAddress,
                               int64_t* pnLength)
{
    const CRow* const pRow = Find(nAddress, *pnLength);
    if (!pRow || !pRow->pWrite)
        return false;
    pRow->pWrite(window, pBuffer);
    *pnLength = pRow->nLength;
    return true;
}

} // namespace KxApi
