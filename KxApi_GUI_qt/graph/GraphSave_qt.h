// SPDX-License-Identifier: Apache-2.0
// Saving a graph's picture and data under a name that the user chooses.
#pragma once

#include <QString>
#include <functional>

namespace KxApi
{

struct IKxGraphDataBufferList;
struct IKxGraphDisplayWndInside;

/// Ask for a name and save. What fails is shown to the user. The window may end while the user thinks. GUI
/// thread.
/// @param strFolder where the user looks first. @return the folder of the file, empty when none was saved.
QString SaveGraphImage(IKxGraphDisplayWndInside& window, QString strFolder);
/// @param data the list, asked for when the name is known; null when there is none any more.
QString SaveGraphData(const std::function<const IKxGraphDataBufferList*()>& data, QString strFolder);

} // namespace KxApi
