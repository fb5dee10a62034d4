// SPDX-License-Identifier: Apache-2.0
// Images, folders and files for the tests of files and graph data.
#pragma once

#include <Base/GCException.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace KxTest
{

using FormatCode = KxApi::EKxPixelFormatNamingConvention_t;
using ImageBuffer = KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer>;
using Filer = KxApi::CKxAutoPtr<KxApi::IKxFilerReleasable>;

/// Where each save need not wait for a disk, if there is such a place.
inline std::filesystem::path FastFolder()
{
    std::error_code ignored;
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory, ignored) ? memory : std::filesystem::temp_directory_path();
}

/// A folder of the test's own, gone with it.
class Folder
{
public:
    Folder()
    {
        std::string path = (FastFolder() / "kxfiles-XXXXXX").string();
        if (!mkdtemp(path.data()))
            throw std::runtime_error("no temporary folder");
        m_path = path;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string operator/(const std::string& name) const { return (m_path / name).string(); }
    /// Names of all that lies in it.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path m_path;
};

inline std::string ReadBytes(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Little-endian number of `count` bytes.
inline uint64_t NumberAt(const std::string& bytes, size_t at, size_t count)
{
    uint64_t value = 0;
    for (size_t i = 0; i < count; ++i)
        value |= uint64_t{static_cast<uint8_t>(bytes.at(at + i))} << (8 * i);
    return value;
}

inline const KxApi::IKxPixelFormatInfoInside& InfoOf(FormatCode format)
{
    return dynamic_cast<const KxApi::IKxPixelFormatInfoInside&>(*KxApi::GetIKxPixelFormatInfo(format));
}

inline std::vector<FormatCode> AllFormats()
{
    std::vector<FormatCode> formats;
    for (size_t i = 0; i < KxApi::GetIKxPixelFormatInfoCount(); ++i)
        formats.push_back(KxApi::GetIKxPixelFormatInfoByIndex(i)->GetPixelFormat());
    return formats;
}

/// An image whose bytes follow no pattern, the same in each run. Floats become small numbers.
inline ImageBuffer NoiseImage(FormatCode format, size_t width, size_t height, size_t alignment = 0)
{
    ImageBuffer buffer(KxApi::CreateIKxImageBuffer(nullptr));
    buffer->SetSize(width, height, format, alignment);
    const KxApi::IKxImage& image = *buffer->GetIKxImage();
    const size_t size = InfoOf(format).GetImageSize(height, image.GetImageLinePitch());
    auto* const bytes = static_cast<uint8_t*>(image.GetImageBuffer());
    uint32_t state = 12345;
    for (size_t i = 0; i < size; ++i) {
        state = state * 1664525 + 1013904223;
        bytes[i] = static_cast<uint8_t>(state >> 24);
    }
    if (InfoOf(format).GetComponentType(0, 0, 0) >> 8 & KxApi::KxPixelNumber_Float) {
        for (size_t i = 3; i < size; i += 4)
            bytes[i] = 0x42;
    }
    return buffer;
}

/// Mono or RGB image of given values, row by row.
template <class T>
ImageBuffer ImageOf(FormatCode format, size_t width, size_t height, const std::vector<T>& values)
{
    ImageBuffer buffer(KxApi::CreateIKxImageBuffer(nullptr));
    buffer->CreateBuffer(width, height, format, KxApi::KxMemoryInitialization_Zero);
    const KxApi::IKxImage& image = *buffer->GetIKxImage();
    auto* const bytes = static_cast<uint8_t*>(image.GetImageBuffer());
    const size_t perLine = values.size() / height;
    for (size_t y = 0; y < height; ++y)
        std::copy_n(reinterpret_cast<const uint8_t*>(&values[y * perLine]), perLine * sizeof(T),
                    bytes + y * image.GetImageLinePitch());
    return buffer;
}

/// Text of an exception of the family, which all failures are; empty when there was none.
template <class Call>
std::string Failure(const Call& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        return e.GetDescription();
    }
    return {};
}

} // namespace KxTest
