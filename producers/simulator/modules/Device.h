// SPDX-License-Identifier: Apache-2.0
// An open device.
#pragma once

#include "camera/Camera.h"
#include "common/modules/Producer.h"

#include <memory>
#include <string>

namespace KxSim
{

class CCameraStream;
class CInterface;

/// Functions belong to the producer's lock, unless they say otherwise.
class CDevice final : public CDeviceModule,
                      public std::enable_shared_from_this<CDevice>,
                      private ICameraListener
{
public:
    CDevice(std::shared_ptr<CInterface> parent, std::shared_ptr<CCamera> camera,
            GenTL::DEVICE_ACCESS_FLAGS access);

    /// Starts the camera and gives out the handle of its port.
    void Start();
    void Close() override;
    CPort* GetPort() override { return &m_port; }
    CInfo GetInfo(GenTL::DEVICE_INFO_CMD command) override;
    void* GetParentHandle() const override;
    void* GetRemotePort() const override { return m_remotePort->GetHandle(); }
    std::string GetStreamId(uint32_t index) const override;
    std::shared_ptr<CStream> OpenStream(const std::string& id) override;

    CCamera& Camera() const { return *m_camera; }
    GenTL::DEVICE_ACCESS_FLAGS Access() const { return m_access; }
    void Detach(const CCameraStream& stream);

protected:
    bool HasEvent(GenTL::EVENT_TYPE type) const override;

private:
    void OnFeatureChanged(const std::string& name) override;
    void OnChangeWanted(const std::string& name, const std::string& value) override;
    void OnRemoteEvent(uint64_t id, const std::string& data) override;
    void OnLost() override;

    const std::shared_ptr<CInterface> m_parent;
    const std::shared_ptr<CCamera> m_camera;
    const GenTL::DEVICE_ACCESS_FLAGS m_access;
    CFeaturePort m_port;
    std::shared_ptr<CRemotePort> m_remotePort;
    std::shared_ptr<CCameraStream> m_stream;
};

} // namespace KxSim
