// SPDX-License-Identifier: Apache-2.0
// The part of an acquisition that goes through the features of the device.
#pragma once

namespace GenApi
{
struct INodeMap;
}

namespace KxApi
{
namespace Detail
{

/// Locks the features that images depend on, and lets the device send images. What a device has no features
/// for isn't done.
class CDeviceControl
{
public:
    /// @param map of the remote device, outlives this object.
    explicit CDeviceControl(GenApi::INodeMap& map)
        : m_map(map)
    {}

    // Each raises what the feature raises. What takes something back does nothing when it hasn't been done.
    void Lock();
    void Start();
    void Stop();
    void Unlock();

private:
    void SetLock(int nValue);

    GenApi::INodeMap& m_map;
    bool m_isLocked = false;
    bool m_isStarted = false;
};

} // namespace Detail
} // namespace KxApi
