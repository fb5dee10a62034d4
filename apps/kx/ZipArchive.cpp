// SPDX-License-Identifier: Apache-2.0
#include "ZipArchive.h"

#include <Base/GCException.h>

#include <minizip/unzip.h>
#include <minizip/zip.h>

#include <cstdio>
#include <ctime>
#include <memory>

namespace Kx
{

namespace
{

zip_fileinfo Now()
{
    zip_fileinfo info{};
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const auto number = [](int value) { return static_cast<uInt>(value); };
    info.tmz_date = {number(local.tm_sec),  number(local.tm_min), number(local.tm_hour),
                     number(local.tm_mday), number(local.tm_mon), number(local.tm_year + 1900)};
    return info;
}

} // namespace

ZipArchive::ZipArchive(std::string path)
    : m_path(std::move(path))
    , m_zip(zipOpen64(m_path.c_str(), APPEND_STATUS_CREATE))
{
    if (!m_zip)
        Raise();
}

ZipArchive::~ZipArchive()
{
    if (!m_zip)
        return;
    zipClose(m_zip, nullptr);
    std::remove(m_path.c_str());
}

void ZipArchive::Raise() const { throw RUNTIME_EXCEPTION("'%s' can't be written", m_path.c_str()); }

void ZipArchive::Add(const std::string& name, const std::string& content)
{
    const zip_fileinfo info = Now();
    if (zipOpenNewFileInZip64(m_zip, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                              Z_DEFAULT_COMPRESSION, 0) != ZIP_OK ||
        zipWriteInFileInZip(m_zip, content.data(), static_cast<unsigned>(content.size())) != ZIP_OK ||
        zipCloseFileInZip(m_zip) != ZIP_OK)
        Raise();
}

void ZipArchive::Finish()
{
    void* const zip = m_zip;
    m_zip = nullptr;
    if (zipClose(zip, nullptr) == ZIP_OK)
        return;
    std::remove(m_path.c_str());
    Raise();
}

std::string FirstFileOf(const std::string& archivePath)
{
    constexpr uLong kMost = 64UL << 20; // far more than any description has
    const std::unique_ptr<void, int (*)(void*)> zip(unzOpen64(archivePath.c_str()), &unzClose);
    unz_file_info64 info{};
    std::string content;
    bool isRead = zip && unzGoToFirstFile(zip.get()) == UNZ_OK &&
                  unzGetCurrentFileInfo64(zip.get(), &info, nullptr, 0, nullptr, 0, nullptr, 0) == UNZ_OK &&
                  info.uncompressed_size <= kMost && unzOpenCurrentFile(zip.get()) == UNZ_OK;
    if (isRead) {
        content.resize(info.uncompressed_size);
        isRead = unzReadCurrentFile(zip.get(), content.data(), static_cast<unsigned>(content.size())) ==
                 static_cast<int>(content.size());
    }
    if (!isRead || unzCloseCurrentFile(zip.get()) != UNZ_OK)
        throw RUNTIME_EXCEPTION("'%s' is no sound zip archive", archivePath.c_str());
    return content;
}

} // namespace Kx
