// SPDX-License-Identifier: Apache-2.0
// The cameras that can be found, by the names that people call them.
#pragma once

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxDevice.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <chrono>
#include <string>
#include <vector>

namespace KxApps
{

using Device = KxApi::CKxAutoPtr<KxApi::IKxDeviceReleasable, KxApi::IKxDevice>;

/// A camera and the interface it hangs on; valid as long as the Cameras that told of it.
struct Camera
{
    KxApi::IKxInterface* pInterface;
    const KxApi::IKxDeviceInfo* pInfo;
};

/// The started SDK with every producer that can be opened. One thread, but where a call says otherwise.
class Cameras
{
public:
    /// What a program that doesn't want to wait begins with: nothing is opened yet.
    struct Later
    {};

    struct InterfaceEntry
    {
        KxApi::IKxInterface* pInterface;
        std::vector<const KxApi::IKxDeviceInfo*> devices;
        std::string error; ///< why its devices can't be listed; empty when they can
    };
    struct SystemEntry
    {
        KxApi::IKxSystem* pSystem;
        std::vector<InterfaceEntry> interfaces;
        std::string error; ///< why its interfaces can't be listed; empty when they can
    };

    /// Opens all producers and looks for cameras once. What can't be opened or listed hides nothing else.
    Cameras();

    explicit Cameras(Later /*unused*/) {}

    /// Opens all producers, once.
    void OpenProducers();
    /// Takes a system over that somebody else opened.
    void Take(KxApi::IKxSystemReleasable* pSystem) { m_systems.Register(pSystem); }
    /// What a system has at present; as long as that takes. Any thread.
    static SystemEntry Search(KxApi::IKxSystem* pSystem);
    /// Takes the result over, in place of what that system had before.
    void Take(SystemEntry entry);

    /// Looks again, in all systems at once. What hasn't come back in time is told as the system's error and
    /// keeps none of the others from being listed.
    void Update(std::chrono::milliseconds patience = std::chrono::seconds(20));

    const std::vector<KxApi::CKxProducerInfo>& Producers() const { return m_producers; }
    const std::vector<SystemEntry>& Systems() const { return m_entries; }

    /// All open systems, for what takes them as a whole.
    KxApi::CIKxSystemPtrArray& SystemArray() { return m_systems; }

    /// All cameras, in the order of systems, interfaces and devices.
    std::vector<Camera> All() const;

    /// The camera that is called so: by ID, else by user-defined name, serial number or model. Raises
    /// RuntimeException that lists what there is when none is, or several are.
    Camera Find(const std::string& name) const;

    /// The first camera that can be controlled now, a simulated one if there is any. Raises RuntimeException
    /// when there is none.
    Camera First() const;

    static bool IsSimulated(const Camera& camera);
    /// Whether nobody holds it, as of the last search.
    static bool CanBeControlled(const Camera& camera);

    /// Opens a camera. Raises RuntimeException that names the camera and what keeps it from being opened.
    static Device Open(const Camera& camera, KxApi::EKxDeviceAccess_t access);

private:
    KxApi::CKxApiAutoInitTerm m_sdk; // first in, last out
    KxApi::CIKxSystemPtrArray m_systems;
    std::vector<KxApi::CKxProducerInfo> m_producers;
    std::vector<SystemEntry> m_entries;
};

/// Name of a GenTL::DEVICE_ACCESS_STATUS_LIST, such as "ReadWrite" or "Busy".
const char* AccessStatusName(int32_t status);

} // namespace KxApps
