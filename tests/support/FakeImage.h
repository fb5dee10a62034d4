// SPDX-License-Identifier: Apache-2.0
// An image over given bytes, as those of cameras are.
#pragma once

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImage.h>

#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace KxTest
{

/// As the interface that a test needs.
template <class Interface>
struct FakeImageOf : Interface
{
    std::vector<uint8_t> bytes; ///< what the image takes and no more, so that sanitizers see a read beyond
    size_t nWidth, nHeight, nLinePitch;
    KxApi::EKxPixelFormatNamingConvention_t ePixelFormat;
    KxApi::CKxPixelComponent component;

    FakeImageOf(KxApi::EKxPixelFormatNamingConvention_t format, size_t width, size_t height, size_t linePitch,
                std::vector<uint8_t> content)
        : bytes(std::move(content))
        , nWidth(width)
        , nHeight(height)
        , nLinePitch(linePitch)
        , ePixelFormat(format)
    {}
    /// Of bytes that differ.
    FakeImageOf(size_t width, size_t height, size_t linePitch, KxApi::EKxPixelFormatNamingConvention_t format,
                size_t size)
        : FakeImageOf(format, width, height, linePitch, std::vector<uint8_t>(size))
    {
        for (size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<uint8_t>(i * 37 + i / 251);
    }

    virtual ~FakeImageOf() = default;

    size_t GetImageWidth() const override { return nWidth; }
    size_t GetImageHeight() const override { return nHeight; }
    size_t GetImageLinePitch() const override { return nLinePitch; }
    size_t GetImagePlanePitch() const override { return nLinePitch * nHeight; }
    KxApi::EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return ePixelFormat; }
    void* GetImageBuffer() const override
    {
        return bytes.empty() ? nullptr : const_cast<uint8_t*>(bytes.data());
    }
    void* GetUserContext() const override { return const_cast<FakeImageOf*>(this); }
    KxApi::IKxImage* GetROIImage(size_t, size_t, size_t, size_t) override
    {
        throw std::logic_error("no windows");
    }
    KxApi::IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        component.SetPixelComponent(this, x, y);
        return &component;
    }
};

using FakeImage = FakeImageOf<KxApi::IKxImageInside>;

} // namespace KxTest
