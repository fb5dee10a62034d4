// SPDX-License-Identifier: Apache-2.0
// What benchmarks of recording share: the recorded images, the file, and what the disk takes without us.
// Folder: KXBENCH_FOLDER, else the one for temporary files.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace KxBench
{

using Clock = std::chrono::steady_clock;

constexpr size_t kWidth = 2448, kHeight = 2048, kBytes = kWidth * kHeight;
constexpr uint64_t kMegabyte = 1000000;
constexpr int kSeconds = 4, kRate = 60, kImages = kSeconds * kRate;

inline double Seconds(Clock::duration time) { return std::chrono::duration<double>(time).count(); }

/// A file that goes at the end.
class File
{
public:
    File()
    {
        const char* const folder = std::getenv("KXBENCH_FOLDER");
        m_path = (folder ? std::filesystem::path(folder) : std::filesystem::temp_directory_path()) /
                 ("kx-bench-" + std::to_string(getpid()) + ".kxseq");
    }
    ~File()
    {
        std::error_code error;
        std::filesystem::remove(m_path, error);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::string Path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

/// Bytes a second that the disk takes of bare writes, until all of them have reached it.
inline double DiskRate(const std::vector<uint8_t>& image)
{
    const File file;
    const int descriptor = open(file.Path().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const Clock::time_point begin = Clock::now();
    for (int i = 0; i < kImages; ++i)
        if (write(descriptor, image.data(), image.size()) != static_cast<ssize_t>(image.size()))
            break;
    fdatasync(descriptor);
    const double seconds = Seconds(Clock::now() - begin);
    close(descriptor);
    return static_cast<double>(image.size()) * kImages / seconds;
}

} // namespace KxBench
