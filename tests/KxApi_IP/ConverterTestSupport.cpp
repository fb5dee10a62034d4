// SPDX-License-Identifier: Apache-2.0
#include "ConverterTestSupport.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <random>

namespace KxTest
{

using namespace KxApi;

const IKxPixelFormatInfoInside& InfoOf(EKxPixelFormatNamingConvention_t format)
{
    return dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(format));
}

std::string NameOf(EKxPixelFormatNamingConvention_t format) { return InfoOf(format).GetName().c_str(); }

View RandomImage(EKxPixelFormatNamingConvention_t format, size_t width, size_t height, size_t extraPitch,
                 unsigned seed)
{
    const IKxPixelFormatInfoInside& info = InfoOf(format);
    const size_t lineBytes = info.GetLinePitch(width, 1);
    const size_t pitch = lineBytes + extraPitch;
    const size_t size =
        info.GetPlaneCount() > 1 ? info.GetImageSize(height, pitch) : (height - 1) * pitch + lineBytes;
    View view(width, height, pitch, format, size);
    std::mt19937 random(seed);
    for (size_t i = 0; i < view.bytes.size(); i += 4) {
        const uint32_t four = static_cast<uint32_t>(random());
        std::memcpy(&view.bytes[i], &four, std::min<size_t>(4, view.bytes.size() - i));
    }
    return view;
}

View ImageOf(EKxPixelFormatNamingConvention_t format, size_t width, size_t height,
             const std::function<unsigned(size_t x, size_t y)>& value)
{
    const size_t bytesPerPixel = InfoOf(format).GetBitsPerPixel() / 8;
    View view(width, height, width * bytesPerPixel, format, width * height * bytesPerPixel);
    for (size_t y = 0; y < height; ++y) {
        for (size_t x = 0; x < width; ++x) {
            const unsigned number = value(x, y);
            std::memcpy(&view.bytes[(y * width + x) * bytesPerPixel], &number, bytesPerPixel);
        }
    }
    return view;
}

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel)
{
    if (pixel.grey >= 0)
        return stream << pixel.grey;
    return stream << pixel.color[0] << ' ' << pixel.color[1] << ' ' << pixel.color[2] << ' '
                  << pixel.color[3];
}

Pixel PixelAt(IKxImage& image, size_t x, size_t y)
{
    const IKxPixelComponent& values = *image.GetIKxPixelComponentValue(x, y);
    Pixel pixel;
    for (size_t k = 0; k < values.GetComponentCount(); ++k) {
        switch (values.GetType(k) >> 24) {
        case KxPixelComponent_R:
            pixel.color[0] = values.GetValue(k);
            break;
        case KxPixelComponent_G:
            pixel.color[1] = values.GetValue(k);
            break;
        case KxPixelComponent_B:
            pixel.color[2] = values.GetValue(k);
            break;
        case KxPixelComponent_Alpha:
            pixel.color[3] = values.GetValue(k);
            break;
        default:
            pixel.grey = values.GetValue(k);
            break;
        }
    }
    return pixel;
}

std::string ErrorOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const GenICam::OutOfRangeException& e) {
        return std::string("OutOfRange: ") + e.GetDescription();
    } catch (const GenICam::InvalidArgumentException& e) {
        return std::string("InvalidArgument: ") + e.GetDescription();
    } catch (const GenICam::LogicalErrorException& e) {
        return std::string("LogicalError: ") + e.GetDescription();
    } catch (const GenICam::RuntimeException& e) {
        return std::string("Runtime: ") + e.GetDescription();
    }
    return {};
}

std::vector<uint8_t> PixelBytes(const IKxImage& image)
{
    const size_t lineBytes = InfoOf(image.GetImagePixelFormat()).GetLinePitch(image.GetImageWidth(), 1);
    std::vector<uint8_t> bytes;
    for (size_t y = 0; y < image.GetImageHeight(); ++y) {
        const uint8_t* const line = Bytes(image) + y * image.GetImageLinePitch();
        bytes.insert(bytes.end(), line, line + lineBytes);
    }
    return bytes;
}

} // namespace KxTest
