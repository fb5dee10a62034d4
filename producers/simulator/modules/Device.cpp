// SPDX-License-Identifier: Apache-2.0

#include "Device.h"

#include "common/modules/ModuleFeatures.h"
#include "modules/CameraStream.h"
#include "modules/Interface.h"

namespace KxSim
{

CDevice::CDevice(std::shared_ptr<CInterface> parent, std::shared_ptr<CCamera> camera,
                 GenTL::DEVICE_ACCESS_FLAGS access)
    : m_parent(std::move(parent))
    , m_camera(std::move(camera))
    , m_access(access)
    , m_port({m_camera->Id(), m_camera->Model().model, TlType(m_camera->Model().technology), "TLDevice",
              "DevicePort"},
             EByteOrder::Little)
{
    const CCameraModel& model = m_camera->Model();
    const CDeviceFacts facts = {
        model.technology, m_camera->Id(), model.serial,
        "Kestrix",        model.model,    "KX simulated cameras",
        "1.0.0",          model.about,    Format("Kestrix %s (%s)", model.model, model.serial),
        1000000000,       m_access,       model.mac,
        {GetStreamId(0)}};
    PublishDevice(
        m_port, {"KxSimulator_Device", "Simulated camera, seen from the host", "DevicePort", "000000000003"},
        facts, [this] { return m_camera->GetUserId(); }, [this] { return m_camera->GetIp(); });
}

void CDevice::Start()
{
    m_camera->Port().SetReadOnly(m_access == GenTL::DEVICE_ACCESS_READONLY);
    m_remotePort = std::make_shared<CRemotePort>(std::shared_ptr<CPort>(m_camera, &m_camera->Port()));
    Handles().Add(m_remotePort);
    m_camera->Open(this);
}

void CDevice::Close()
{
    if (m_stream)
        std::shared_ptr<CCameraStream>(m_stream)->Close();
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

CInfo CDevice::GetInfo(GenTL::DEVICE_INFO_CMD command) { return m_parent->GetDeviceInfo(*m_camera, command); }

void* CDevice::GetParentHandle() const { return m_parent->GetHandle(); }

std::string CDevice::GetStreamId(uint32_t index) const
{
    if (index != 0)
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There is one stream, none with index %u", index);
    return m_camera->Id() + "_Stream0";
}

std::shared_ptr<CStream> CDevice::OpenStream(const std::string& id)
{
    if (id != GetStreamId(0))
        Fail(GenTL::GC_ERR_INVALID_ID, "Device '%s' has no stream '%s'", m_camera->Id().c_str(), id.c_str());
    if (m_access == GenTL::DEVICE_ACCESS_READONLY)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is open for reading only", m_camera->Id().c_str());
    if (m_stream)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Stream '%s' is open already", id.c_str());
    m_stream = std::make_shared<CCameraStream>(shared_from_this(), id);
    Handles().Add(m_stream);
    m_camera->SetStream(m_stream);
    return m_stream;
}

void CDevice::Detach(const CCameraStream& stream)
{
    if (m_stream.get() != &stream)
        return;
    m_camera->SetStream(nullptr);
    m_stream.reset();
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
