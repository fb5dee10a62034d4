// SPDX-License-Identifier: Apache-2.0
// Images to convert, and what their pixels are.
#pragma once

#include "ImageTestSupport.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace KxTest
{

/// All formats that are written.
inline constexpr KxApi::EKxPixelFormatNamingConvention_t kDestinations[] = {
    KxApi::KxPixelFormat_Mono8,    KxApi::KxPixelFormat_Mono10, KxApi::KxPixelFormat_Mono12,
    KxApi::KxPixelFormat_Mono14,   KxApi::KxPixelFormat_Mono16, KxApi::KxPixelFormat_RGB8,
    KxApi::KxPixelFormat_BGR8,     KxApi::KxPixelFormat_RGBa8,  KxApi::KxPixelFormat_BGRa8,
    KxApi::KxPixelFormat_RGB10p32, KxApi::KxPixelFormat_RGB10,  KxApi::KxPixelFormat_BGR10p32,
    KxApi::KxPixelFormat_BGR10,    KxApi::KxPixelFormat_RGB12,  KxApi::KxPixelFormat_BGR12,
    KxApi::KxPixelFormat_RGB16,    KxApi::KxPixelFormat_BGR16};

const KxApi::IKxPixelFormatInfoInside& InfoOf(KxApi::EKxPixelFormatNamingConvention_t format);
std::string NameOf(KxApi::EKxPixelFormatNamingConvention_t format);

/// An image of random bytes that ends with its last pixel's byte, so that the address sanitizer sees a step
/// behind.
View RandomImage(KxApi::EKxPixelFormatNamingConvention_t format, size_t width, size_t height,
                 size_t extraPitch = 0, unsigned seed = 1);

/// An image of a format with one value a pixel, 8 bits or in 16.
View ImageOf(KxApi::EKxPixelFormatNamingConvention_t format, size_t width, size_t height,
             const std::function<unsigned(size_t x, size_t y)>& value);

/// A pixel in terms of R, G, B, alpha or of one grey; -1 for what it hasn't.
struct Pixel
{
    std::array<int64_t, 4> color{-1, -1, -1, -1};
    int64_t grey = -1;

    bool operator==(const Pixel& other) const { return color == other.color && grey == other.grey; }
};
std::ostream& operator<<(std::ostream& stream, const Pixel& pixel);

Pixel PixelAt(KxApi::IKxImage& image, size_t x, size_t y);

/// The bytes of all pixels, without what fills the lines.
std::vector<uint8_t> PixelBytes(const KxApi::IKxImage& image);

/// What a call raises, as "OutOfRange: description"; empty when it raises nothing.
std::string ErrorOf(const std::function<void()>& call);

/// A converter with an image to write to.
struct TestConverter
{
    KxApi::CKxApiAutoInitTerm init;
    KxApi::CKxAutoPtr<KxApi::IKxConverterReleasable, KxApi::IKxPixelFormatConverterInside> converter{
        KxApi::CreateIKxConverter(0)};
    KxApi::CKxImageBuffer target{nullptr};

    explicit TestConverter(KxApi::EKxPixelFormatNamingConvention_t destination = KxApi::KxPixelFormat_BGR8)
    {
        converter->SetDestinationPixelFormat(destination);
    }
    KxApi::IKxPixelFormatConverterInside* operator->() { return converter.Get(); }
    KxApi::IKxImage& Convert(View& source)
    {
        converter->Convert(&source, &target);
        return *target.GetIKxImage();
    }
};

} // namespace KxTest
