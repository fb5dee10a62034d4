// SPDX-License-Identifier: Apache-2.0
// What system, interface, device and stream have in common: a port and events.
#pragma once

#include "modules/EventQueue.h"
#include "modules/Handles.h"
#include "modules/Port.h"

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace KxSim
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
    /// Puts a block into the queue of the type, if anybody registered it. Any thread.
    void Fire(GenTL::EVENT_TYPE type, const std::string& block);

protected:
    virtual bool HasEvent(GenTL::EVENT_TYPE type) const { return type == GenTL::EVENT_ERROR; }
    virtual std::shared_ptr<CEventQueue> MakeQueue(GenTL::EVENT_TYPE type);
    std::shared_ptr<CEventQueue> FindQueue(GenTL::EVENT_TYPE type) const;

private:
    mutable std::mutex m_eventMutex;
    std::map<GenTL::EVENT_TYPE, std::shared_ptr<CEventQueue>> m_queues;
};

/// The camera's registers, as a handle of its own.
class CRemotePort : public CModule
{
public:
    explicit CRemotePort(CPort& port)
        : m_port(port)
    {}
    CPort* GetPort() override { return &m_port; }

protected:
    bool HasEvent(GenTL::EVENT_TYPE) const override { return false; }

private:
    CPort& m_port;
};

} // namespace KxSim
