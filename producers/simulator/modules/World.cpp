// SPDX-License-Identifier: Apache-2.0

#include "World.h"

#include "modules/System.h"

#include <cstdlib>

namespace KxSim
{
namespace
{

constexpr uint32_t kBroadcast = 0xFFFFFFFF;

/// Whether an environment variable, a list with commas, names the camera.
bool IsNamedIn(const char* variable, const CCamera& camera)
{
    const char* const value = std::getenv(variable);
    return value && ("," + std::string(value) + ",").find("," + camera.Id() + ",") != std::string::npos;
}

struct CAdapterRow
{
    ETechnology technology;
    const char *id, *displayName;
    uint64_t mac;
    CIpConfig ip;
};

constexpr CAdapterRow kAdapters[] = {
    {ETechnology::U3V, "KxSim_U3V", "Simulated USB3 Vision Host", 0, {}},
    {ETechnology::GEV,
     "KxSim_GEV",
     "Simulated GigE Vision Adapter",
     0x024B58000001,
     {0xC0A80A01, 0xFFFFFF00, 0xC0A80AFE}},
    {ETechnology::CXP, "KxSim_CXP", "Simulated CoaXPress Board", 0, {}},
};

} // namespace

bool CAdapter::Reaches(const CCamera& camera) const
{
    if (technology != ETechnology::GEV)
        return true;
    const CIpConfig other = camera.GetIp();
    return other.mask == ip.mask && ((other.address ^ ip.address) & ip.mask) == 0;
}

bool CAdapter::Hears(const CCamera& camera) const
{
    if (technology != ETechnology::GEV)
        return true;
    const CIpConfig other = camera.GetIp();
    const bool isAddressed = discoveryDestination == kBroadcast || discoveryDestination == other.address ||
                             discoveryDestination == (other.address | ~other.mask);
    // From another subnet an answer to one address finds no way back.
    return isAddressed && (allowsBroadcastAnswers || Reaches(camera));
}

CWorld::CWorld()
{
    for (const CAdapterRow& row : kAdapters) {
        auto adapter = std::make_unique<CAdapter>();
        adapter->technology = row.technology;
        adapter->id = row.id;
        adapter->displayName = row.displayName;
        adapter->mac = row.mac;
        adapter->ip = row.ip;
        for (const CCameraModel& model : CameraModels()) {
            if (model.technology != row.technology)
                continue;
            auto camera = std::make_shared<CCamera>(model);
            camera->SetPlugged(!IsNamedIn("KXSIM_UNPLUGGED", *camera));
            camera->SetTruncated(IsNamedIn("KXSIM_TRUNCATED_XML", *camera));
            adapter->cameras.push_back(std::move(camera));
        }
        m_adapters.push_back(std::move(adapter));
    }
}

CWorld::~CWorld()
{
    if (m_system)
        std::shared_ptr<CSystem>(m_system)->Close();
}

std::shared_ptr<CSystemModule> CWorld::OpenSystem()
{
    if (m_system)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The system is open already");
    m_system = std::make_shared<CSystem>(*this);
    Handles().Add(m_system);
    return m_system;
}

} // namespace KxSim
