// SPDX-License-Identifier: Apache-2.0
// What system, interface, device and stream have in common: a port and events.
#pragma once

#include "common/modules/EventQueue.h"
#include "common/modules/Handles.h"
#include "common/modules/Port.h"

#include <map>
#include <memory>
#include <utility>

namespace KxProducer
{

class CModule : public CHandled
{
public:
    /// The module's own registers; null if it has none.
    virtual CPort* GetPort() = 0;
    /// Closes what hangs on it, and gives back its handle. Once, by whoever opened it.
    virtual void Close();

    std::shared_ptr<CEventQueue> RegisterEvent(GenTL::EVENT_TYPE type);
    void UnregisterEvent(GenTL::EVENT_TYPE type);
    /// Puts a block into the queue of the type, if anybody registered it, and not for events that have a
    /// source of their own. Any thread.
    void Fire(GenTL::EVENT_TYPE type, const std::string& block);

protected:
    virtual bool HasEvent(GenTL::EVENT_TYPE type) const { return type == GenTL::EVENT_ERROR; }
    /// Where events of a type come from; what Fire fills, unless the module knows better.
    virtual std::shared_ptr<CEventSource> SourceOf(GenTL::EVENT_TYPE type);

private:
    std::shared_ptr<CEventQueue> FindQueue(GenTL::EVENT_TYPE type) const;

    mutable KxApi::CKxMutex m_eventMutex;
    std::map<GenTL::EVENT_TYPE, std::shared_ptr<CEventQueue>> m_queues KXGC_GUARDED_BY(m_eventMutex);
};

/// The camera's registers, as a handle of its own.
class CRemotePort : public CModule
{
public:
    explicit CRemotePort(std::shared_ptr<CPort> port)
        : m_port(std::move(port))
    {}
    CPort* GetPort() override { return m_port.get(); }

protected:
    bool HasEvent(GenTL::EVENT_TYPE) const override { return false; }

private:
    const std::shared_ptr<CPort> m_port;
};

} // namespace KxProducer
