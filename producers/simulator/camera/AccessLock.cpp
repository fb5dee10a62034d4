// SPDX-License-Identifier: Apache-2.0

#include "AccessLock.h"

#include "Common.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace KxSim
{
namespace
{

// Each user has files of their own: those of others couldn't be opened.
std::string PathFor(const std::string& cameraId)
{
    const char* const folder = std::getenv("TMPDIR");
    return Format("%s/kxsim-%u-%s.lock", folder && *folder ? folder : "/tmp", static_cast<unsigned>(getuid()),
                  cameraId.c_str());
}

// Bytes of the file. Everybody shares the first one but who wants to be alone; the second one is control.
constexpr int kPresence = 0, kControl = 1;

} // namespace

CAccessLock::CAccessLock(const std::string& cameraId)
    : m_path(PathFor(cameraId))
{}

CAccessLock::~CAccessLock() { Release(); }

bool CAccessLock::OpenFile()
{
    if (m_file < 0)
        m_file = open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    return m_file >= 0;
}

bool CAccessLock::Lock(short type, int place) const
{
    struct flock range
    {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = place;
    range.l_len = 1;
    return fcntl(m_file, F_OFD_SETLK, &range) == 0;
}

bool CAccessLock::Take(GenTL::DEVICE_ACCESS_FLAGS access)
{
    if (!OpenFile())
        return true;
    const short presence = access == GenTL::DEVICE_ACCESS_EXCLUSIVE ? F_WRLCK : F_RDLCK;
    const bool wantsControl = access != GenTL::DEVICE_ACCESS_READONLY;
    if (Lock(presence, kPresence) && (!wantsControl || Lock(F_WRLCK, kControl)))
        return true;
    Release();
    return false;
}

void CAccessLock::Release()
{
    if (m_file >= 0)
        close(m_file);
    m_file = -1;
}

bool CAccessLock::IsTakenElsewhere()
{
    const bool wasOpen = m_file >= 0;
    if (!OpenFile())
        return false;
    struct flock range
    {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = kControl;
    range.l_len = 1;
    const bool isTaken = fcntl(m_file, F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK;
    if (!wasOpen)
        Release();
    return isTaken;
}

} // namespace KxSim
