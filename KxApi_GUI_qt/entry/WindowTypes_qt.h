// SPDX-License-Identifier: Apache-2.0
// The kinds of windows, one row each.
#pragma once

#include <KxApi_GUI/IKxWnd.h>

class QWidget;

namespace KxApi
{

class CBaseDialogEx;
struct IDlgParent;

/// Number of kinds.
inline constexpr uint32_t kWindowTypes = 4;

/// A new window of the kind. Raises BadAllocException.
IKxWndReleasable* MakeWindow(_EKxWindowType_t eType);

/// A new part dialog of the kind. GUI thread. Raises as above.
CBaseDialogEx* MakePartDialog(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                              bool bWithMenuBar);

} // namespace KxApi
