// SPDX-License-Identifier: Apache-2.0

#include "CTransportDevice.h"

#include "CTransportStream.h"
#include "Caught.h"
#include "DeviceEvents.h"
#include "GenTLInfo.h"
#include "PortUrls.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/INodeMap.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr uint32_t kMaxStreams = 256;
/// The port of a camera's description, unless the producer tells another name.
constexpr char kRemotePortName[] = "Device";
/// Reads that fail one after the other until a device counts as lost.
constexpr int kProbesUntilLost = 2;
constexpr double kNsPerSecond = 1e9;

class CErrorParam final : public CKxCallbackParamBase<IKxDeviceErrorParam>
{
public:
    CErrorParam(uint32_t nType, int32_t error, const GenICam::gcstring& text)
        : CKxCallbackParamBase(nType)
        , m_error(error)
        , m_text(text)
    {}

    int32_t GetError() const override { return m_error; }
    GenICam::gcstring GetDescription() const override { return m_text; }

private:
    const int32_t m_error;
    const GenICam::gcstring& m_text;
};

/// Does the same with all events of a kind.
class CHandlerSink final : public CEventSink
{
public:
    CHandlerSink(CTransportDevice& device, std::function<void(const CEvent&)> handler)
        : m_device(device)
        , m_handler(std::move(handler))
    {}

    bool OnEvent(const CEvent& event) override
    {
        try {
            m_handler(event);
        } catch (...) {
            m_device.ReportError(CodeOfCaught(), TextOfCaught());
        }
        return true;
    }

    bool OnFailure(GenTL::GC_ERROR error, int nInRow) override
    {
        if (nInRow < kMaxFailuresInRow)
            return true;
        m_device.ReportError(error, "EventGetData fails again and again; this kind of events is given up");
        m_device.CheckLost();
        return false;
    }

private:
    CTransportDevice& m_device; // stops the thread before its end
    const std::function<void(const CEvent&)> m_handler;
};

bool MeansLost(GenTL::GC_ERROR error)
{
    return error == GenTL::GC_ERR_INVALID_HANDLE || error == GenTL::GC_ERR_INVALID_ID ||
           error == GenTL::GC_ERR_IO;
}

} // namespace

CTransportDevice::CTransportDevice(CKxAutoPtr<IKxSystemReleasable> system, CTransportInterface& interface,
                                   const IKxDeviceInfo& info, EKxDeviceAccess_t eAccess)
    : m_system(std::move(system))
    , m_interface(interface)
    , m_info(info)
    , m_eAccess(eAccess)
    , m_lib(CKxGenTLLib::Load(interface.GetProducerPath()))
    , m_handle(interface.OpenDevice(info.GetID(), eAccess))
{
    try {
        CModulePort::CTraits local;
        local.onNodeMap = [this](GenApi::INodeMap& map) { OnLocalNodeMap(map); };
        m_localPort = std::make_unique<CModulePort>(
            *m_lib, [this] { return m_handle; }, std::move(local));
        CModulePort::CTraits remote;
        remote.isReadOnly = eAccess == KxDeviceAccess_ReadOnly;
        remote.nameIfUntold = kRemotePortName;
        remote.onNodeMap = [this](GenApi::INodeMap& map) { OnRemoteNodeMap(map); };
        m_remotePort = std::make_unique<CModulePort>(
            *m_lib, [this] { return OpenRemotePort(); }, std::move(remote));
    } catch (...) {
        m_interface.CloseDevice(m_handle);
        throw;
    }
}

CTransportDevice::~CTransportDevice()
{
    for (const std::unique_ptr<CEventThread>& thread : m_threads)
        thread->RequestStop(); // all at once, which saves time
    m_threads.clear();
    m_remoteEvents.reset();
    m_localEvents.reset();
    m_remotePort.reset();
    m_localPort.reset();
    m_interface.CloseDevice(m_handle);
}

IKxDeviceReleasable* CTransportDevice::GiveOut(std::shared_ptr<CTransportDevice> device)
{
    CTransportDevice& given = *device;
    given.m_self = std::move(device);
    return &given;
}

void CTransportDevice::Release() { const std::shared_ptr<CTransportDevice> self = std::move(m_self); }

void* CTransportDevice::RegisterCallback(IKxCallback* pCallback)
{
    return m_callbacks.RegisterCallback(pCallback);
}

void CTransportDevice::DeregisterCallback(void* hCallback) { m_callbacks.DeregisterCallback(hCallback); }

GenTL::PORT_HANDLE CTransportDevice::OpenRemotePort()
{
    GenTL::PORT_HANDLE port = nullptr;
    CheckGenTL(*m_lib, m_lib->DevGetPort(m_handle, &port), "DevGetPort", m_info.GetID().c_str());
    if (!port)
        throw RUNTIME_EXCEPTION("DevGetPort of '%s' gave no handle", m_info.GetID().c_str());
    for (const GenICam::gcstring& url : ReadPortUrls(*m_lib, port)) {
        if (CKxXMLFile::ParseURLLocation(url) == EURLLocation_Local)
            m_fileAddress = CKxXMLFile::ParseURLLocalAddress(url);
    }
    return port;
}

uint32_t CTransportDevice::GetStreamCount() const
{
    uint32_t count = 0;
    CheckGenTL(*m_lib, m_lib->DevGetNumDataStreams(m_handle, &count), "DevGetNumDataStreams",
               m_info.GetID().c_str());
    if (count > kMaxStreams)
        throw RUNTIME_EXCEPTION("Device '%s' tells of %u streams; Max = %u", m_info.GetID().c_str(), count,
                                kMaxStreams);
    return count;
}

IKxStreamReleasable* CTransportDevice::OpenIKxStream(uint32_t nIndex)
{
    return GenICam::GuardBadAlloc([&]() -> IKxStreamReleasable* {
        const uint32_t count = GetStreamCount();
        KXGC_CHECK_RANGE(rlBelowMax, "nIndex", nIndex, count);
        GenICam::gcstring id;
        const auto read = [&](char* text, size_t* size) {
            return m_lib->DevGetDataStreamID(m_handle, nIndex, text, size);
        };
        CheckGenTL(*m_lib, GetText(read, id), "DevGetDataStreamID", m_info.GetID().c_str());
        GenTL::DS_HANDLE handle = nullptr;
        CheckGenTL(*m_lib, m_lib->DevOpenDataStream(m_handle, id.c_str(), &handle), "DevOpenDataStream",
                   id.c_str());
        if (!handle)
            throw RUNTIME_EXCEPTION("DevOpenDataStream of '%s' gave no handle", id.c_str());
        return OpenTransportStream(shared_from_this(), handle, id);
    });
}

double CTransportDevice::TickNs() const
{
    const int64_t frequency = GetInfoInteger(
        [&](auto... arguments) {
            return m_lib->DevGetInfo(m_handle, GenTL::DEVICE_INFO_TIMESTAMP_FREQUENCY, arguments...);
        },
        0);
    return frequency > 0 ? kNsPerSecond / static_cast<double>(frequency) : 0;
}

std::unique_ptr<CEventThread> CTransportDevice::TakeEvents(GenTL::EVENTSRC_HANDLE hSource,
                                                           GenTL::EVENT_TYPE type, const char* szThread,
                                                           EventHandler handler)
{
    try {
        auto thread = std::make_unique<CEventThread>(m_lib, hSource, type, m_info.GetID().c_str());
        thread->Start(std::make_shared<CHandlerSink>(*this, std::move(handler)), szThread);
        return thread;
    } catch (const CKxGenTLErrorException& e) {
        // No kind of events is mandatory, but a producer that fails otherwise is worth a word.
        if (e.GetError() != GenTL::GC_ERR_NOT_IMPLEMENTED && e.GetError() != GenTL::GC_ERR_NOT_AVAILABLE)
            ReportError(e.GetError(), e.GetDescription());
    } catch (const GenICam::RuntimeException& e) {
        ReportError(GenTL::GC_ERR_ERROR, e.GetDescription());
    }
    return nullptr;
}

void CTransportDevice::TakeOwnEvents(GenTL::EVENT_TYPE type, const char* szThread, EventHandler handler)
{
    if (std::unique_ptr<CEventThread> thread = TakeEvents(m_handle, type, szThread, std::move(handler))) {
        const CKxMutexLock lock(m_threadsMutex);
        m_threads.push_back(std::move(thread));
    }
}

void CTransportDevice::OnRemoteNodeMap(GenApi::INodeMap& map)
{
    FindProbe();
    m_remoteEvents = std::make_unique<GenApi::CEventAdapterGeneric>(&map);
    TakeOwnEvents(GenTL::EVENT_REMOTE_DEVICE, "KxRemoteEvents",
                  [this](const CEvent& event) { DeliverEvent(event, *m_remoteEvents); });
    TakeOwnEvents(GenTL::EVENT_FEATURE_INVALIDATE, "KxInvalidate",
                  [&map](const CEvent& event) { InvalidateFeature(event, map); });
    TakeOwnEvents(GenTL::EVENT_FEATURE_CHANGE, "KxChange",
                  [&map](const CEvent& event) { ChangeFeature(event, map); });
    TakeOwnEvents(GenTL::EVENT_ERROR, "KxErrors", [this](const CEvent& event) { OnErrorEvent(event); });
}

void CTransportDevice::OnLocalNodeMap(GenApi::INodeMap& map)
{
    m_localEvents = std::make_unique<GenApi::CEventAdapterGeneric>(&map);
    TakeOwnEvents(GenTL::EVENT_MODULE, "KxModuleEvents",
                  [this](const CEvent& event) { DeliverEvent(event, *m_localEvents); });
}

void CTransportDevice::OnErrorEvent(const CEvent& event)
{
    const GenTL::GC_ERROR error =
        static_cast<GenTL::GC_ERROR>(event.Number(GenTL::EVENT_DATA_ID, GenTL::GC_ERR_ERROR));
    ReportError(error, event.Text(GenTL::EVENT_DATA_VALUE).c_str());
    for (int i = 0; i < kProbesUntilLost && !CheckLost(); ++i) {
        // With the error there is no need to wait for the next look.
    }
}

/// A port that doesn't let the description be read in parts, or lies elsewhere, has its first register: that
/// of the version, with most technologies.
void CTransportDevice::FindProbe()
{
    for (const uint64_t address : {m_fileAddress.load(), uint64_t{0}}) {
        m_probeAddress = address;
        if (Probe() == GenTL::GC_ERR_SUCCESS)
            return;
    }
    m_probeAddress = kNoProbe; // then it says nothing about the device
}

/// Reads that have to fail one after the other until the device counts as lost; 0 when it is lost already.
/// The access status proves nothing: there are producers that call a device inaccessible because we have it
/// open.
int CTransportDevice::FailuresUntilLost(GenTL::GC_ERROR& error) const
{
    int32_t status = GenTL::DEVICE_ACCESS_STATUS_UNKNOWN;
    size_t size = sizeof(status);
    GenTL::INFO_DATATYPE type = GenTL::INFO_DATATYPE_UNKNOWN;
    error = m_lib->DevGetInfo(m_handle, GenTL::DEVICE_INFO_ACCESS_STATUS, &type, &status, &size);
    if (error != GenTL::GC_ERR_SUCCESS)
        return MeansLost(error) ? 0 : kProbesUntilLost;
    const bool isCalledLost = size == sizeof(status) && status == GenTL::DEVICE_ACCESS_STATUS_NOACCESS;
    return isCalledLost ? 1 : kProbesUntilLost;
}

GenTL::GC_ERROR CTransportDevice::Probe() const
{
    GenTL::PORT_HANDLE port = nullptr;
    const GenTL::GC_ERROR error = m_lib->DevGetPort(m_handle, &port);
    if (error != GenTL::GC_ERR_SUCCESS)
        return error;
    uint32_t beginning = 0;
    size_t size = sizeof(beginning);
    return m_lib->GCReadPort(port, m_probeAddress, &beginning, &size);
}

bool CTransportDevice::CheckLost()
{
    if (m_isLost)
        return true;
    GenTL::GC_ERROR error = GenTL::GC_ERR_SUCCESS;
    const int nUntilLost = FailuresUntilLost(error);
    if (nUntilLost == 0) {
        ReportLoss(error);
    } else if (m_probeAddress != kNoProbe) {
        error = Probe();
        if (error == GenTL::GC_ERR_SUCCESS)
            m_failedProbes = 0;
        else if (++m_failedProbes >= nUntilLost)
            ReportLoss(error);
    }
    return m_isLost;
}

void CTransportDevice::ReportLoss(GenTL::GC_ERROR error)
{
    if (!m_isLost.exchange(true))
        Report(KxDeviceCallback_Lost, error,
               "Device '" + m_info.GetDisplayName() + "' does not answer any more");
}

void CTransportDevice::ReportError(GenTL::GC_ERROR error, const GenICam::gcstring& text)
{
    Report(KxDeviceCallback_Error, error, text);
}

void CTransportDevice::Report(uint32_t nType, GenTL::GC_ERROR error, const GenICam::gcstring& text)
{
    CErrorParam param(nType, error, text);
    m_callbacks.RunCallback(&param);
}

} // namespace Detail

IKxDeviceReleasable* CreateIKxDevice(IKxInterface* pInterface, const IKxDeviceInfo* pDeviceInfo,
                                     EKxDeviceAccess_t eAccess)
{
    CheckKxApiInitialized();
    auto* const pOwn = dynamic_cast<Detail::CTransportInterface*>(pInterface);
    if (!pOwn)
        throw INVALID_ARGUMENT_EXCEPTION("%s is %s", "pInterface",
                                         pInterface ? "no interface of a producer" : "null");
    if (!pOwn->Owns(pDeviceInfo))
        throw INVALID_ARGUMENT_EXCEPTION("%s is %s", "pDeviceInfo",
                                         pDeviceInfo ? "no device of the interface" : "null");
    if (eAccess < KxDeviceAccess_ReadOnly || eAccess > KxDeviceAccess_Exclusive)
        throw INVALID_ARGUMENT_EXCEPTION("eAccess = %d is unknown", static_cast<int>(eAccess));
    return GenICam::GuardBadAlloc([&] {
        CKxAutoPtr<IKxSystemReleasable> system(CreateIKxSystem(pOwn->GetProducerPath()));
        return Detail::CTransportDevice::GiveOut(
            std::make_shared<Detail::CTransportDevice>(std::move(system), *pOwn, *pDeviceInfo, eAccess));
    });
}

} // namespace KxApi
