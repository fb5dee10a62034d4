// SPDX-License-Identifier: Apache-2.0

#include "Module.h"

#include "gentl/Immortal.h"

namespace KxSim
{

CHandles& Handles()
{
    static CImmortal<CHandles> handles;
    return handles.Get();
}

void CModule::Close()
{
    std::map<GenTL::EVENT_TYPE, std::shared_ptr<CEventQueue>> queues;
    {
        const std::lock_guard<std::mutex> lock(m_eventMutex);
        queues.swap(m_queues);
    }
    for (const auto& [type, queue] : queues) {
        Handles().Remove(*queue);
        queue->Close();
    }
    Handles().Remove(*this);
}

std::shared_ptr<CEventQueue> CModule::MakeQueue(GenTL::EVENT_TYPE type)
{
    return std::make_shared<CEventQueue>(type);
}

std::shared_ptr<CEventQueue> CModule::FindQueue(GenTL::EVENT_TYPE type) const
{
    const std::lock_guard<std::mutex> lock(m_eventMutex);
    const auto place = m_queues.find(type);
    return place == m_queues.end() ? nullptr : place->second;
}

std::shared_ptr<CEventQueue> CModule::RegisterEvent(GenTL::EVENT_TYPE type)
{
    if (!HasEvent(type))
        Fail(GenTL::GC_ERR_NOT_IMPLEMENTED, "The module has no events of type %d", type);
    std::shared_ptr<CEventQueue> queue = MakeQueue(type);
    const std::lock_guard<std::mutex> lock(m_eventMutex);
    if (!m_queues.emplace(type, queue).second)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Events of type %d are registered already", type);
    Handles().Add(queue);
    return queue;
}

void CModule::UnregisterEvent(GenTL::EVENT_TYPE type)
{
    const std::shared_ptr<CEventQueue> queue = FindQueue(type);
    if (!queue)
        Fail(GenTL::GC_ERR_NOT_INITIALIZED, "Events of type %d are not registered", type);
    {
        const std::lock_guard<std::mutex> lock(m_eventMutex);
        m_queues.erase(type);
    }
    Handles().Remove(*queue);
    queue->Close();
}

void CModule::Fire(GenTL::EVENT_TYPE type, const std::string& block)
{
    if (const std::shared_ptr<CEventQueue> queue = FindQueue(type))
        queue->Push(block);
}

} // namespace KxSim
