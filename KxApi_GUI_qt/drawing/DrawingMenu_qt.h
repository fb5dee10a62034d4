// SPDX-License-Identifier: Apache-2.0
// The context menu of the drawing tool.
#pragma once

class QPoint;

namespace KxApi
{

class CDrawingModel;

/// Opens the menu at a place of the screen and does what the user chooses there. While a dialog for the
/// selected objects is open, their lock is held: no other thread takes them away meanwhile. GUI thread.
void RunDrawingMenu(CDrawingModel& model, const QPoint& ptGlobal);

} // namespace KxApi
