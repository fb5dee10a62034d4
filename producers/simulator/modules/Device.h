// SPDX-License-Identifier: Apache-2.0
// An open device.
#pragma once

#include "camera/Camera.h"
#include "modules/Module.h"

#include <memory>
#include <string>

namespace KxSim
{

class CInterface;
class CStream;

/// Functions belong to the producer's lock, unless they say otherwise.
class CDevice final : public CModule, public std::enable_shared_from_this<CDevice>, private ICameraListener
{
public:
    CDevice(std::shared_ptr<CInterface> parent, std::shared_ptr<CCamera> camera,
            GenTL::DEVICE_ACCESS_FLAGS access);

    /// Starts the camera and gives out the handle of its port.
    void Start();
    void Close() override;
    CPort* GetPort() override { return &m_port; }
    CInterface& Parent() const { return *m_parent; }
    CCamera& Camera() const { return *m_camera; }
    void* RemotePort() const { return m_remotePort->GetHandle(); }
    GenTL::DEVICE_ACCESS_FLAGS Access() const { return m_access; }

    std::string StreamId() const;
    std::shared_ptr<CStream> OpenStream(const std::string& id);
    void Detach(const CStream& stream);

    // Any thread, without a lock held.
    const char* TlType() const { return KxSim::TlType(m_camera->Model().technology); }
    size_t PayloadSize();
    static size_t MaxChunks() { return CCamera::MaxChunks(); }
    /// Both ways that the standard knows are shown: of some technologies the stream tells, of others the
    /// camera.
    bool DefinesPayloadSize() const { return m_camera->Model().technology != ETechnology::U3V; }

protected:
    bool HasEvent(GenTL::EVENT_TYPE type) const override;

private:
    void DescribePort();
    void OnFeatureChanged(const std::string& name) override;
    void OnChangeWanted(const std::string& name, const std::string& value) override;
    void OnRemoteEvent(uint64_t id, const std::string& data) override;
    void OnLost() override;

    const std::shared_ptr<CInterface> m_parent;
    const std::shared_ptr<CCamera> m_camera;
    const GenTL::DEVICE_ACCESS_FLAGS m_access;
    CPort m_port;
    std::shared_ptr<CRemotePort> m_remotePort;
    std::shared_ptr<CStream> m_stream;
};

} // namespace KxSim
