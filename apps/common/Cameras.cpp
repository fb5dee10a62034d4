// SPDX-License-Identifier: Apache-2.0
#include "Cameras.h"

#include <Base/GCException.h>

#include <GenTL/GenTL.h>

#include <algorithm>
#include <exception>
#include <future>
#include <iterator>
#include <thread>
#include <utility>

using namespace KxApi;

namespace KxApps
{

namespace
{

struct StatusRow
{
    int32_t status;
    const char* name;
};

constexpr StatusRow kStatuses[] = {
    {GenTL::DEVICE_ACCESS_STATUS_READWRITE, "ReadWrite"},
    {GenTL::DEVICE_ACCESS_STATUS_READONLY, "ReadOnly"},
    {GenTL::DEVICE_ACCESS_STATUS_NOACCESS, "NoAccess"},
    {GenTL::DEVICE_ACCESS_STATUS_BUSY, "Busy"},
    {GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE, "OpenReadWrite"},
    {GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY, "OpenReadOnly"},
};

Cameras::InterfaceEntry List(IKxInterface* pInterface)
{
    Cameras::InterfaceEntry entry{pInterface, {}, {}};
    try {
        pInterface->UpdateDeviceList();
    } catch (const GenICam::GenericException& e) {
        entry.error = e.GetDescription();
    }
    for (uint32_t i = 0; i < pInterface->GetDeviceCount(); ++i)
        entry.devices.push_back(pInterface->GetIKxDeviceInfo(i));
    return entry;
}

bool IsCalled(const IKxDeviceInfo& info, const std::string& name)
{
    return info.GetUserDefinedName() == name.c_str() || info.GetSerialNumber() == name.c_str() ||
           info.GetModel() == name.c_str();
}

std::string Names(const std::vector<Camera>& cameras)
{
    std::string text;
    for (const Camera& camera : cameras)
        text += (text.empty() ? "" : ", ") + std::string(camera.pInfo->GetID().c_str());
    return text.empty() ? "none" : text;
}

Cameras::SystemEntry Hanging(IKxSystem* pSystem, std::chrono::milliseconds patience)
{
    return {pSystem,
            {},
            "its search for cameras hasn't come back in " + std::to_string(patience.count()) + " ms"};
}

// In a thread that nobody has to wait for, and that keeps the system open while it searches.
std::future<Cameras::SystemEntry> SearchAside(IKxSystem* pSystem)
{
    std::promise<Cameras::SystemEntry> promise;
    std::future<Cameras::SystemEntry> future = promise.get_future();
    CKxAutoPtr<IKxSystemReleasable> hold(HoldIKxSystem(pSystem));
    std::thread([pSystem, hold = std::move(hold), promise = std::move(promise)]() mutable {
        try {
            Cameras::SystemEntry entry = Cameras::Search(pSystem);
            hold.Reset(); // whoever uses the result closes the system
            promise.set_value(std::move(entry));
        } catch (...) {
            promise.set_exception(std::current_exception());
        }
    }).detach();
    return future;
}

// Texts that list cameras outgrow what the exception's own formatting keeps.
[[noreturn]] void Raise(const std::string& text)
{
    throw GenICam::RuntimeException(text.c_str(), __FILE__, __LINE__);
}

} // namespace

Cameras::Cameras()
{
    OpenProducers();
    Update();
}

void Cameras::OpenProducers() { m_producers = OpenIKxSystems(m_systems); }

Cameras::SystemEntry Cameras::Search(IKxSystem* pSystem)
{
    SystemEntry entry{pSystem, {}, {}};
    try {
        pSystem->UpdateInterfaceList();
    } catch (const GenICam::GenericException& e) {
        entry.error = e.GetDescription();
    }
    for (uint32_t i = 0; i < pSystem->GetInterfaceCount(); ++i)
        entry.interfaces.push_back(List(pSystem->GetIKxInterface(i)));
    return entry;
}

void Cameras::Take(SystemEntry entry)
{
    const auto same = std::find_if(m_entries.begin(), m_entries.end(), [&](const SystemEntry& candidate) {
        return candidate.pSystem == entry.pSystem;
    });
    if (same == m_entries.end())
        m_entries.push_back(std::move(entry));
    else
        *same = std::move(entry);
}

void Cameras::Update(std::chrono::milliseconds patience)
{
    const auto until = std::chrono::steady_clock::now() + patience;
    std::vector<std::future<SystemEntry>> searches;
    for (size_t i = 0; i < m_systems.GetSize(); ++i)
        searches.push_back(SearchAside(m_systems[i]));
    for (size_t i = 0; i < searches.size(); ++i)
        Take(searches[i].wait_until(until) == std::future_status::ready ? searches[i].get()
                                                                        : Hanging(m_systems[i], patience));
}

bool Cameras::IsSimulated(const Camera& camera)
{
    return camera.pInterface->GetIKxSystem()->GetIKxSystemInfo()->GetModel() == "KxSimulator";
}

bool Cameras::CanBeControlled(const Camera& camera)
{
    return camera.pInfo->GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_READWRITE;
}

std::vector<Camera> Cameras::All() const
{
    std::vector<Camera> cameras;
    for (const SystemEntry& system : m_entries)
        for (const InterfaceEntry& entry : system.interfaces)
            for (const IKxDeviceInfo* const pInfo : entry.devices)
                cameras.push_back({entry.pInterface, pInfo});
    return cameras;
}

Camera Cameras::Find(const std::string& name) const
{
    const std::vector<Camera> all = All();
    std::vector<Camera> found;
    std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                 [&](const Camera& camera) { return camera.pInfo->GetID() == name.c_str(); });
    if (found.empty())
        std::copy_if(all.begin(), all.end(), std::back_inserter(found),
                     [&](const Camera& camera) { return IsCalled(*camera.pInfo, name); });
    if (found.empty())
        Raise("no camera is called '" + name + "'; there are: " + Names(all));
    if (found.size() > 1)
        Raise("several cameras are called '" + name + "': " + Names(found));
    return found.front();
}

Camera Cameras::First() const
{
    std::vector<Camera> cameras = All();
    cameras.erase(
        std::remove_if(cameras.begin(), cameras.end(), [](const Camera& c) { return !CanBeControlled(c); }),
        cameras.end());
    if (cameras.empty())
        Raise("no camera can be opened; there are: " + Names(All()));
    const auto simulated = std::find_if(cameras.begin(), cameras.end(), IsSimulated);
    return simulated == cameras.end() ? cameras.front() : *simulated;
}

Device Cameras::Open(const Camera& camera, EKxDeviceAccess_t access)
{
    try {
        return Device(CreateIKxDevice(camera.pInterface, camera.pInfo, access));
    } catch (const GenICam::GenericException& e) {
        Raise(std::string("cannot open ") + camera.pInfo->GetID().c_str() + " (" +
              AccessStatusName(camera.pInfo->GetAccessStatus()) + "): " + e.GetDescription());
    }
}

const char* AccessStatusName(int32_t status)
{
    const auto row =
        std::find_if(std::begin(kStatuses), std::end(kStatuses),
                     [status](const StatusRow& candidate) { return candidate.status == status; });
    return row == std::end(kStatuses) ? "Unknown" : row->name;
}

} // namespace KxApps
