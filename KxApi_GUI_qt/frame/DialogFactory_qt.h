// SPDX-License-Identifier: Apache-2.0
// Where windows get their dialogs. The kinds of dialogs stand above this floor, as does what is declared
// here.
#pragma once

#include <KxApi_GUI/IKxWnd.h>

class QWidget;

namespace KxApi
{

class CBaseDialogEx;
struct IDlgParent;

/// Builds the part dialog of a kind of window, in the GUI thread whatever the caller's, which waits for it.
/// Raises what its constructor raises.
CBaseDialogEx* BuildPartDialog(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                               bool bWithMenuBar);

} // namespace KxApi
