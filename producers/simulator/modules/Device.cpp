// SPDX-License-Identifier: Apache-2.0

#include "Device.h"

#include "modules/Interface.h"
#include "modules/Stream.h"

namespace KxSim
{

CDevice::CDevice(std::shared_ptr<CInterface> parent, std::shared_ptr<CCamera> camera,
                 GenTL::DEVICE_ACCESS_FLAGS access)
    : m_parent(std::move(parent))
    , m_camera(std::move(camera))
    , m_access(access)
    , m_port({m_camera->Id(), m_camera->Model().model, KxSim::TlType(m_camera->Model().technology),
              "TLDevice", "DevicePort"},
             EByteOrder::Little)
{
    DescribePort();
}

void CDevice::Start()
{
    m_camera->Port().access = [access = m_access] { return access; };
    m_remotePort = std::make_shared<CRemotePort>(m_camera->Port());
    Handles().Add(m_remotePort);
    m_camera->Open(this);
}

void CDevice::Close()
{
    if (m_stream)
        std::shared_ptr<CStream>(m_stream)->Close();
    m_camera->Close();
    m_camera->AccessLock().Release();
    Handles().Remove(*m_remotePort);
    CModule::Close();
    m_parent->Detach(*this);
}

bool CDevice::HasEvent(GenTL::EVENT_TYPE type) const
{
    return type != GenTL::EVENT_NEW_BUFFER && type >= GenTL::EVENT_ERROR && type <= GenTL::EVENT_MODULE;
}

std::string CDevice::StreamId() const { return m_camera->Id() + "_Stream0"; }

std::shared_ptr<CStream> CDevice::OpenStream(const std::string& id)
{
    if (id != StreamId())
        Fail(GenTL::GC_ERR_INVALID_ID, "Device '%s' has no stream '%s'", m_camera->Id().c_str(), id.c_str());
    if (m_access == GenTL::DEVICE_ACCESS_READONLY)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open for reading only", m_camera->Id().c_str());
    if (m_stream)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Stream '%s' is open already", id.c_str());
    m_stream = std::make_shared<CStream>(shared_from_this(), id);
    Handles().Add(m_stream);
    m_camera->SetStream(m_stream);
    return m_stream;
}

void CDevice::Detach(const CStream& stream)
{
    if (m_stream.get() != &stream)
        return;
    m_camera->SetStream(nullptr);
    m_stream.reset();
}

size_t CDevice::PayloadSize()
{
    const std::lock_guard<std::mutex> lock(m_camera->Port().Mutex());
    return m_camera->PayloadSize();
}

void CDevice::OnFeatureChanged(const std::string& name)
{
    Fire(GenTL::EVENT_FEATURE_INVALIDATE, FeatureBlock(name));
}

void CDevice::OnChangeWanted(const std::string& name, const std::string& value)
{
    Fire(GenTL::EVENT_FEATURE_CHANGE, FeatureBlock(name, value));
}

void CDevice::OnRemoteEvent(uint64_t id, const std::string& data)
{
    Fire(GenTL::EVENT_REMOTE_DEVICE, GenApiEventBlock(id, data));
}

void CDevice::OnLost()
{
    Fire(GenTL::EVENT_ERROR, ErrorBlock(GenTL::GC_ERR_IO, "Camera '" + m_camera->Id() + "' is unplugged"));
}

} // namespace KxSim
