// SPDX-License-Identifier: Apache-2.0

#include "DeviceEvents.h"

#include <Base/GCException.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>

#include <limits>

namespace KxApi
{
namespace Detail
{

void DeliverEvent(const CEvent& event, GenApi::CEventAdapterGeneric& adapter)
{
    const std::vector<uint8_t> bytes = event.Bytes(GenTL::EVENT_DATA_VALUE);
    if (bytes.size() > std::numeric_limits<uint32_t>::max())
        throw RUNTIME_EXCEPTION("Event of %zu bytes", bytes.size());
    const auto size = static_cast<uint32_t>(bytes.size());
    const std::string id = event.Text(GenTL::EVENT_DATA_ID);
    if (!id.empty()) {
        adapter.DeliverMessage(bytes.data(), size, GenICam::gcstring(id.c_str()));
        return;
    }
    const int64_t number = event.Number(GenTL::EVENT_DATA_NUMID, -1);
    if (number < 0)
        throw RUNTIME_EXCEPTION("Event of %zu bytes without an ID", bytes.size());
    adapter.DeliverMessage(bytes.data(), size, static_cast<uint64_t>(number));
}

void InvalidateFeature(const CEvent& event, GenApi::INodeMap& map)
{
    const std::string name = event.Text(GenTL::EVENT_DATA_ID);
    if (name.empty())
        map.InvalidateNodes();
    else if (GenApi::INode* const pNode = map.GetNode(name.c_str()))
        pNode->InvalidateNode();
}

void ChangeFeature(const CEvent& event, GenApi::INodeMap& map)
{
    const std::string name = event.Text(GenTL::EVENT_DATA_ID);
    auto* const pValue = dynamic_cast<GenApi::IValue*>(map.GetNode(name.c_str()));
    if (!pValue)
        throw INVALID_ARGUMENT_EXCEPTION("The producer wants feature '%s' set, which isn't there",
                                         name.c_str());
    pValue->FromString(event.Text(GenTL::EVENT_DATA_VALUE).c_str());
}

} // namespace Detail
} // namespace KxApi
