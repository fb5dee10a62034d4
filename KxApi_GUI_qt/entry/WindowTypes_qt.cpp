// SPDX-License-Identifier: Apache-2.0
#include "entry/WindowTypes_qt.h"

#include "device/DisplayDeviceSelectionPartDlg_qt.h"
#include "device/KxDeviceSelectionWnd_qt.h"
#include "graph/KxDisplayGraphWnd_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/KxDisplayImageWnd_qt.h"
#include "nodemap/DisplayNodeMapPartDlg_qt.h"
#include "nodemap/KxDisplayNodeMapWnd_qt.h"

#include <iterator>
#include <type_traits>

namespace KxApi
{
namespace
{

/// A kind of window.
struct CWindowTypeRow
{
    _EKxWindowType_t eType;
    IKxWndReleasable* (*pMakeWindow)();
    CBaseDialogEx* (*pMakeDialog)(QWidget*, IDlgParent*, bool);
};

template <class TWnd, class TPartDlg>
constexpr CWindowTypeRow RowOf()
{
    return {TWnd::kWndType,
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

// clang-format off
constexpr CWindowTypeRow kRows[] = {
    RowOf<CKxDeviceSelectionWnd, CDisplayDeviceSelectionPartDlg>(),
    RowOf<CKxDisplayImageWnd, CDisplayImagePartDlg>(),
    RowOf<CKxDisplayNodeMapWnd, CDisplayNodeMapPartDlg>(),
    RowOf<CKxDisplayGraphWnd, CDisplayGraphPartDlg>(),
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

} // namespace

IKxWndReleasable* MakeWindow(_EKxWindowType_t eType) { return kRows[eType].pMakeWindow(); }

CBaseDialogEx* MakePartDialog(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                              bool bWithMenuBar)
{
    return kRows[eType].pMakeDialog(pParent, pDlgParent, bWithMenuBar);
}

} // namespace KxApi
