// SPDX-License-Identifier: Apache-2.0

#include "CameraStream.h"

namespace KxSim
{
namespace
{

CPortFacts FactsOf(const CCameraModel& model, const std::string& id)
{
    return {id, model.model, TlType(model.technology), "TLDataStream", "StreamPort"};
}

} // namespace

CCameraStream::CCameraStream(std::shared_ptr<CDevice> device, const std::string& id)
    : CStream(id, FactsOf(device->Camera().Model(), id))
    , m_device(std::move(device))
{
    DescribePort({"KxSimulator_Stream", "Stream of a simulated camera", "StreamPort", "000000000004"},
                 ConventionName(m_device->Camera().Model().technology));
}

void CCameraStream::Close()
{
    m_device->Detach(*this);
    CStream::Close();
}

const char* CCameraStream::TlType() const
{
    return KxProducer::TlType(m_device->Camera().Model().technology);
}

size_t CCameraStream::PayloadSize()
{
    CCamera& camera = m_device->Camera();
    const std::lock_guard<std::mutex> lock(camera.Port().Mutex());
    return camera.PayloadSize();
}

bool CCameraStream::DefinesPayloadSize() const
{
    return m_device->Camera().Model().technology != ETechnology::U3V;
}

} // namespace KxSim
