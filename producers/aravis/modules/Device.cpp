// SPDX-License-Identifier: Apache-2.0
#include "modules/Device.h"

#include "common/modules/ModuleFeatures.h"
#include "modules/CameraPort.h"
#include "modules/Interface.h"
#include "modules/Stream.h"

namespace KxAravis
{
namespace
{

using KxProducer::Fail;

// Above the registers of any camera, whatever its width of addresses.
constexpr uint64_t kFileAddress = 0xFFFF000000000000;

} // namespace

CDevice::CDevice(std::shared_ptr<CInterface> parent, CDeviceFacts facts, GPtr<ArvDevice> device,
                 GenTL::DEVICE_ACCESS_FLAGS access)
    : m_parent(std::move(parent))
    , m_facts(std::move(facts))
    , m_device(std::move(device))
    , m_access(access)
    , m_port({m_facts.id, m_facts.model, KxProducer::TlType(m_facts.technology), "TLDevice", "DevicePort"},
             KxProducer::EByteOrder::Little)
{
    KxProducer::CDeviceFacts published;
    published.technology = m_facts.technology;
    published.id = m_facts.id;
    published.serial = m_facts.serial;
    published.vendor = m_facts.vendor;
    published.model = m_facts.model;
    published.version = m_facts.version;
    published.displayName = m_facts.DisplayName();
    published.access = m_access;
    published.mac = m_facts.gev.mac;
    published.streamIds = {StreamId()};
    KxProducer::PublishDevice(
        m_port, {"KxAravis_Device", m_facts.DisplayName(), "DevicePort", "200000000001"}, published,
        [this] { return m_facts.userName; }, [this] { return m_facts.gev.ip; });
    KxProducer::CPortFacts remote{m_facts.id, m_facts.model, KxProducer::TlType(m_facts.technology), "Device",
                                  "Device"}; // as descriptions call it
    remote.vendor = m_facts.vendor;
    remote.version = m_facts.version;
    remote.fileAddress = kFileAddress;
    m_cameraPort =
        std::make_shared<CCameraPort>(std::move(remote), *m_device, m_facts.technology == ETechnology::GEV,
                                      m_access != GenTL::DEVICE_ACCESS_READONLY);
    m_remotePort = std::make_shared<KxProducer::CRemotePort>(m_cameraPort);
}

CDevice::~CDevice()
{
    if (m_signal != 0)
        g_signal_handler_disconnect(m_device.get(), m_signal);
}

void CDevice::Start()
{
    KxProducer::Handles().Add(m_remotePort);
    m_signal = g_signal_connect(m_device.get(), "control-lost", G_CALLBACK(&CDevice::OnControlLost), this);
}

void CDevice::Close()
{
    if (m_stream)
        std::shared_ptr<CStream>(m_stream)->Close();
    KxProducer::Handles().Remove(*m_remotePort);
    CModule::Close();
    m_parent->Detach(*this);
}

void CDevice::OnControlLost(ArvDevice* /*pArvDevice*/, CDevice* pDevice)
{
    pDevice->m_isLost = true;
    pDevice->m_cameraPort->SetLost();
    pDevice->Fire(
        GenTL::EVENT_ERROR,
        KxProducer::ErrorBlock(GenTL::GC_ERR_IO, "Camera '" + pDevice->m_facts.id +
                                                     "' doesn't answer any more, or another program "
                                                     "has taken control of it"));
}

KxProducer::CInfo CDevice::GetInfo(GenTL::DEVICE_INFO_CMD command)
{
    return m_parent->GetDeviceInfo(m_facts, command);
}

void* CDevice::GetParentHandle() const { return m_parent->GetHandle(); }

bool CDevice::HasEvent(GenTL::EVENT_TYPE type) const
{
    return type == GenTL::EVENT_ERROR || type == GenTL::EVENT_MODULE;
}

std::string CDevice::GetStreamId(uint32_t index) const
{
    if (index != 0)
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There is one stream, none with index %u", index);
    return StreamId();
}

std::shared_ptr<KxProducer::CStream> CDevice::OpenStream(const std::string& id)
{
    if (id != StreamId())
        Fail(GenTL::GC_ERR_INVALID_ID, "Device '%s' has no stream '%s'", m_facts.id.c_str(), id.c_str());
    if (m_access == GenTL::DEVICE_ACCESS_READONLY)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open for reading only", m_facts.id.c_str());
    if (m_stream)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Stream '%s' is open already", id.c_str());
    m_stream = std::make_shared<CStream>(shared_from_this(), id);
    KxProducer::Handles().Add(m_stream);
    return m_stream;
}

void CDevice::Detach(const CStream& stream)
{
    if (m_stream.get() == &stream)
        m_stream.reset();
}

size_t CDevice::PayloadSize() const
{
    CArvError error;
    const gint64 size = arv_device_get_integer_feature_value(m_device.get(), "PayloadSize", &error);
    return error.IsSet() || size < 0 ? 0 : static_cast<size_t>(size);
}

} // namespace KxAravis
