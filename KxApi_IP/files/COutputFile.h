// SPDX-License-Identifier: Apache-2.0
// A file that is there as a whole or not at all.
#pragma once

#include <Base/GCString.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

struct stat;

namespace KxApi
{
namespace Detail
{

/// Collects what is written in a temporary file in the folder of the file to be made. Commit gives it its
/// name; without it nothing is left behind. What killed processes left is removed by the next save into the
/// folder.
///
/// The first failure is kept: all writes after it do nothing, and Commit or Check raises it. So code that
/// must not throw, such as callbacks of C libraries, writes through the same object.
class COutputFile
{
public:
    /// Raises CKxLinuxErrorException when the folder can't be written, or when there is something of that
    /// name that must not be replaced: a folder, a device, a file that may not be written.
    explicit COutputFile(const GenICam::gcstring& strPath);
    COutputFile(const COutputFile&) = delete;
    COutputFile& operator=(const COutputFile&) = delete;
    ~COutputFile();

    /// Appends bytes; false when this or an earlier call failed.
    bool Write(const void* pData, size_t nSize) noexcept;
    /// Overwrites or continues from `nPosition` on; likewise.
    bool Seek(uint64_t nPosition) noexcept;
    uint64_t Position() const noexcept { return m_position; }
    /// Bytes read back from the position; likewise 0.
    size_t Read(void* pData, size_t nSize) noexcept;
    /// Bytes so far.
    uint64_t Size() noexcept;

    /// Raises the failure, if there was one.
    void Check() const;
    /// Brings all to the disk and makes the file appear.
    void Commit();

private:
    void OpenTemporary();
    void TakeRights(const struct stat& old) noexcept;
    bool Flush() noexcept;
    bool WriteThrough(const uint8_t* pData, size_t nSize) noexcept;
    bool Fail(const char* szFunction) noexcept;
    [[noreturn]] void Raise(int error, const char* szFunction, const char* szCause = nullptr) const;

    const std::string m_strShown; // as the caller named it, for messages
    std::string m_strTarget;
    std::string m_strTemporary;
    int m_descriptor = -1;
    int m_error = 0;
    const char* m_szFailed = "";
    uint64_t m_position = 0;
    size_t m_buffered = 0;
    std::unique_ptr<uint8_t[]> m_pBuffer;
};

} // namespace Detail
} // namespace KxApi
