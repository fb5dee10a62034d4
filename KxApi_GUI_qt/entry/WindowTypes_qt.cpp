// SPDX-License-Identifier: Apache-2.0
#include "entry/WindowTypes_qt.h"

#include "device/DisplayDeviceSelectionPartDlg_qt.h"
#include "device/KxDeviceSelectionWnd_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/KxDisplayImageWnd_qt.h"
#include "nodemap/DisplayNodeMapPartDlg_qt.h"
#include "nodemap/KxDisplayNodeMapWnd_qt.h"

#include <Base/GCException.h>

#include <iterator>
#include <type_traits>

namespace KxApi
{
namespace
{

/// A kind of window; null functions where this build lacks it.
struct CWindowTypeRow
{
    _EKxWindowType_t eType;
    const char* szName;
    IKxWndReleasable* (*pMakeWindow)();
    CBaseDialogEx* (*pMakeDialog)(QWidget*, IDlgParent*, bool);
};

template <class TWnd, class TPartDlg>
constexpr CWindowTypeRow Present()
{
    return {TWnd::kWndType, TWnd::kWndName,
            []() -> IKxWndReleasable* {
                // Some take an allocator.
                if constexpr (std::is_default_constructible_v<TWnd>)
                    return new TWnd;
                else
                    return new TWnd(nullptr);
            },
            [](QWidget* pParent, IDlgParent* pDlgParent, bool bWithMenuBar) -> CBaseDialogEx* {
                return new TPartDlg(pParent, pDlgParent, bWithMenuBar);
            }};
}

constexpr CWindowTypeRow Absent(_EKxWindowType_t eType, const char* szName)
{
    return {eType, szName, nullptr, nullptr};
}

// clang-format off
constexpr CWindowTypeRow kRows[] = {
    Present<CKxDeviceSelectionWnd, CDisplayDeviceSelectionPartDlg>(),
    Present<CKxDisplayImageWnd, CDisplayImagePartDlg>(),
    Present<CKxDisplayNodeMapWnd, CDisplayNodeMapPartDlg>(),
    Absent(KxWindowType_GraphDisplay, "Graph display"),
};
// clang-format on

constexpr bool RowsStandAtTheirTypes()
{
    for (uint32_t i = 0; i < kWindowTypes; ++i) {
        if (kRows[i].eType != i)
            return false;
    }
    return true;
}
static_assert(std::size(kRows) == kWindowTypes && RowsStandAtTheirTypes());

const CWindowTypeRow& PresentRow(_EKxWindowType_t eType)
{
    const CWindowTypeRow& row = kRows[eType];
    if (!row.pMakeWindow)
        throw RUNTIME_EXCEPTION("Windows of type %u (%s) are not part of this build yet.",
                                static_cast<unsigned>(eType), row.szName);
    return row;
}

} // namespace

IKxWndReleasable* MakeWindow(_EKxWindowType_t eType) { return PresentRow(eType).pMakeWindow(); }

CBaseDialogEx* MakePartDialog(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                              bool bWithMenuBar)
{
    return PresentRow(eType).pMakeDialog(pParent, pDlgParent, bWithMenuBar);
}

} // namespace KxApi
