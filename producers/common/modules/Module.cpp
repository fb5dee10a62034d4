// SPDX-License-Identifier: Apache-2.0

#include "Module.h"

#include "common/gentl/Immortal.h"

namespace KxProducer
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
        const KxApi::CKxMutexLock lock(m_eventMutex);
        queues.swap(m_queues);
    }
    for (const auto& [type, queue] : queues) {
        Handles().Remove(*queue);
        queue->Close();
    }
    Handles().Remove(*this);
}

std::shared_ptr<CEventSource> CModule::SourceOf(GenTL::EVENT_TYPE)
{
    return std::make_shared<CBlockSource>();
}

std::shared_ptr<CEventQueue> CModule::FindQueue(GenTL::EVENT_TYPE type) const
{
    const KxApi::CKxMutexLock lock(m_eventMutex);
    const auto place = m_queues.find(type);
    return place == m_queues.end() ? nullptr : place->second;
}

std::shared_ptr<CEventQueue> CModule::RegisterEvent(GenTL::EVENT_TYPE type)
{
    if (!HasEvent(type))
        Fail(GenTL::GC_ERR_NOT_IMPLEMENTED, "The module has no events of type %d", type);
    auto queue = std::make_shared<CEventQueue>(type, SourceOf(type));
    const KxApi::CKxMutexLock lock(m_eventMutex);
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
        const KxApi::CKxMutexLock lock(m_eventMutex);
        m_queues.erase(type);
    }
    Handles().Remove(*queue);
    queue->Close();
}

void CModule::Fire(GenTL::EVENT_TYPE type, const std::string& block)
{
    const std::shared_ptr<CEventQueue> queue = FindQueue(type);
    if (const auto source = queue ? std::dynamic_pointer_cast<CBlockSource>(queue->Source()) : nullptr)
        source->Push(block);
}

} // namespace KxProducer
