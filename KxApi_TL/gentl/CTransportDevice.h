// SPDX-License-Identifier: Apache-2.0
// A device that is open.
#pragma once

#include "CEventThread.h"
#include "CModulePort.h"
#include "CTransportInterface.h"

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxSDKCommon/KxCallbackManager.h>
#include <KxSDKCommon/KxMutex.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace GenApi
{
class CEventAdapterGeneric;
}

namespace KxApi
{
namespace Detail
{

/// Shared by its holder, by its open streams, and by the calls that are under way in their threads.
class CTransportDevice final : public IKxDeviceReleasable,
                               public std::enable_shared_from_this<CTransportDevice>
{
public:
    /// @param system keeps the interface and the info alive.
    CTransportDevice(CKxAutoPtr<IKxSystemReleasable> system, CTransportInterface& interface,
                     const IKxDeviceInfo& info, EKxDeviceAccess_t eAccess);
    CTransportDevice(const CTransportDevice&) = delete;
    CTransportDevice& operator=(const CTransportDevice&) = delete;
    ~CTransportDevice();

    /// Makes the device its own holder until Release, and gives it out.
    static IKxDeviceReleasable* GiveOut(std::shared_ptr<CTransportDevice> device);

    IKxInterface* GetIKxInterface() const override { return &m_interface; }
    const IKxDeviceInfo* GetIKxDeviceInfo() const override { return &m_info; }
    EKxDeviceAccess_t GetAccess() const override { return m_eAccess; }
    IKxPort* GetIKxRemotePort() override { return m_remotePort.get(); }
    IKxPort* GetIKxLocalPort() override { return m_localPort.get(); }
    uint32_t GetStreamCount() const override;
    IKxStreamReleasable* OpenIKxStream(uint32_t nIndex) override;
    bool IsLost() const override { return m_isLost; }
    void* RegisterCallback(IKxCallback* pCallback) override;
    void DeregisterCallback(void* hCallback) override;
    void Release() override;

    const std::shared_ptr<CKxGenTLLib>& Lib() const { return m_lib; }
    /// Nanoseconds of a tick of the device's clock; 0 when they aren't told.
    double TickNs() const;

    using EventHandler = std::function<void(const CEvent&)>;

    /// Has a thread take in the events of one kind, of the device's or one of its stream modules'; null when
    /// there are no such events. What the handler raises is reported.
    std::unique_ptr<CEventThread> TakeEvents(GenTL::EVENTSRC_HANDLE hSource, GenTL::EVENT_TYPE type,
                                             const char* szThread, EventHandler handler);

    /// Looks whether the device still answers; reports the loss. Any thread.
    bool CheckLost();

    /// Tells the application of an error of the producer's or in an event. Any thread.
    void ReportError(GenTL::GC_ERROR error, const GenICam::gcstring& text);

private:
    GenTL::PORT_HANDLE OpenRemotePort();
    void TakeOwnEvents(GenTL::EVENT_TYPE type, const char* szThread, EventHandler handler);
    void OnRemoteNodeMap(GenApi::INodeMap& map);
    void OnLocalNodeMap(GenApi::INodeMap& map);
    void OnErrorEvent(const CEvent& event);
    int FailuresUntilLost(GenTL::GC_ERROR& error) const;
    GenTL::GC_ERROR Probe() const;
    void FindProbe();
    void ReportLoss(GenTL::GC_ERROR error);
    void Report(uint32_t nType, GenTL::GC_ERROR error, const GenICam::gcstring& text);

    const CKxAutoPtr<IKxSystemReleasable> m_system;
    CTransportInterface& m_interface;
    const IKxDeviceInfo& m_info;
    const EKxDeviceAccess_t m_eAccess;
    const std::shared_ptr<CKxGenTLLib> m_lib;
    const GenTL::DEV_HANDLE m_handle;
    std::atomic<bool> m_isLost{false};
    std::atomic<int> m_failedProbes{0};
    static constexpr uint64_t kNoProbe = ~uint64_t{0};
    std::atomic<uint64_t> m_probeAddress{kNoProbe}; // of a register that could be read once
    std::atomic<uint64_t> m_fileAddress{0};         // of the description
    CKxCallbackManager m_callbacks;
    std::shared_ptr<CTransportDevice> m_self; // from GiveOut to Release

    std::unique_ptr<CModulePort> m_localPort;
    std::unique_ptr<CModulePort> m_remotePort;
    std::unique_ptr<GenApi::CEventAdapterGeneric> m_localEvents; // before the threads that deliver to it
    std::unique_ptr<GenApi::CEventAdapterGeneric> m_remoteEvents;
    CKxMutex m_threadsMutex; // nothing is taken while holding it
    std::vector<std::unique_ptr<CEventThread>> m_threads KXGC_GUARDED_BY(m_threadsMutex);
};

} // namespace Detail
} // namespace KxApi
