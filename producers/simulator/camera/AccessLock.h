// SPDX-License-Identifier: Apache-2.0
// Which process has opened a camera.
#pragma once

#include <GenTL/GenTL.h>

#include <string>

namespace KxSim
{

/// Locks on a small file in the folder for temporary files (TMPDIR), which end with the process whatever
/// happens to it. Where that folder can't be written, other processes are not seen.
class CAccessLock
{
public:
    explicit CAccessLock(const std::string& cameraId);
    ~CAccessLock();
    CAccessLock(const CAccessLock&) = delete;
    CAccessLock& operator=(const CAccessLock&) = delete;

    /// False if another process is in the way.
    bool Take(GenTL::DEVICE_ACCESS_FLAGS access);
    void Release();
    /// Whether another process has control.
    bool IsTakenElsewhere();

private:
    bool OpenFile();
    bool Lock(short type, int place) const;

    const std::string m_path;
    int m_file = -1;
};

} // namespace KxSim
