// SPDX-License-Identifier: Apache-2.0
// What events of a device do to a node map.
#pragma once

#include "CEventThread.h"

namespace GenApi
{
class CEventAdapterGeneric;
struct INodeMap;
} // namespace GenApi

namespace KxApi
{
namespace Detail
{

/// Gives the data to the ports of the nodes with the event's ID.
void DeliverEvent(const CEvent& event, GenApi::CEventAdapterGeneric& adapter);

/// Invalidates the feature that changed by itself; all of them when the event names none.
void InvalidateFeature(const CEvent& event, GenApi::INodeMap& map);

/// Sets the feature that the producer wants changed. Raises what the feature raises, InvalidArgumentException
/// when there is none of that name.
void ChangeFeature(const CEvent& event, GenApi::INodeMap& map);

} // namespace Detail
} // namespace KxApi
