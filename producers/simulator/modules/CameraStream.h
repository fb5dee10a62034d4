// SPDX-License-Identifier: Apache-2.0
// The stream of a simulated camera, into which the camera's own thread delivers.
#pragma once

#include "common/modules/Stream.h"
#include "modules/Device.h"

#include <memory>
#include <string>

namespace KxSim
{

class CCameraStream final : public CStream
{
public:
    CCameraStream(std::shared_ptr<CDevice> device, const std::string& id);

    void Close() override;
    void* GetParentHandle() const override { return m_device->GetHandle(); }

protected:
    const char* TlType() const override;
    size_t PayloadSize() override;
    /// Both ways that the standard knows are shown: of some technologies the stream tells, of others the
    /// camera.
    bool DefinesPayloadSize() const override;
    size_t MaxChunks() const override { return CCamera::MaxChunks(); }

private:
    const std::shared_ptr<CDevice> m_device;
};

} // namespace KxSim
