// SPDX-License-Identifier: Apache-2.0
// An image over bytes that a test wrote.
#pragma once

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImage.h>

#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TestTransport
{

class FakeImage final : public KxApi::IKxImage
{
public:
    FakeImage(KxApi::EKxPixelFormatNamingConvention_t format, size_t width, size_t height, size_t linePitch,
              std::vector<uint8_t> bytes)
        : m_format(format)
        , m_width(width)
        , m_height(height)
        , m_linePitch(linePitch)
        , m_bytes(std::move(bytes))
    {}

    size_t GetImageWidth() const override { return m_width; }
    size_t GetImageHeight() const override { return m_height; }
    size_t GetImageLinePitch() const override { return m_linePitch; }
    size_t GetImagePlanePitch() const override { return m_linePitch * m_height; }
    KxApi::EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return m_format; }
    void* GetImageBuffer() const override
    {
        return m_bytes.empty() ? nullptr : const_cast<uint8_t*>(m_bytes.data());
    }
    void* GetUserContext() const override { return nullptr; }
    KxApi::IKxImage* GetROIImage(size_t, size_t, size_t, size_t) override
    {
        throw std::logic_error("no windows");
    }
    KxApi::IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        m_component.SetPixelComponent(this, x, y);
        return &m_component;
    }

private:
    KxApi::EKxPixelFormatNamingConvention_t m_format;
    size_t m_width;
    size_t m_height;
    size_t m_linePitch;
    std::vector<uint8_t> m_bytes; // exactly what the format takes, so that sanitizers see a read beyond
    KxApi::CKxPixelComponent m_component;
};

} // namespace TestTransport
