// SPDX-License-Identifier: Apache-2.0
// Zip archives, written and read.
#pragma once

#include <string>

namespace Kx
{

/// A new archive. Without Finish it is removed.
class ZipArchive
{
public:
    /// Raises RuntimeException when the file can't be made.
    explicit ZipArchive(std::string path);
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    /// Raises RuntimeException when it can't be written.
    void Add(const std::string& name, const std::string& content);
    /// Raises likewise.
    void Finish();

private:
    [[noreturn]] void Raise() const;

    const std::string m_path;
    void* m_zip;
};

/// The first file of an archive. Raises RuntimeException when it can't be read.
std::string FirstFileOf(const std::string& archivePath);

} // namespace Kx
