// SPDX-License-Identifier: Apache-2.0
// Images of an acquisition into files, one each.
#pragma once

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

#include <cstdint>
#include <string>

namespace KxApi
{
struct IKxStreamImage;
}

namespace Kx
{

/// Writes images under numbered names. One thread.
class FrameWriter
{
public:
    static constexpr const char* kHelp =
        "Saves each image: a name with its number as %d or %04d, such as frame-%04d.png (.bmp, .jpg, .tif, "
        ".png, .csv, .kxraw), or a folder, which gets all bytes as they are in .kxraw files";

    /// @param format name of the pixel format that images are converted to; empty to save them as they are
    /// Raises InvalidArgumentException for an output that can't hold a number or whose ending names no file
    /// type, and for a format that the converter doesn't make.
    FrameWriter(const std::string& output, const std::string& format);

    /// What the file type doesn't take as it is, is converted to what the converter chooses. Raises what the
    /// format or the disk object to, with the path.
    void Write(KxApi::IKxStreamImage& image, uint64_t number);

private:
    std::string PathOf(uint64_t number) const;
    KxApi::IKxImage* Savable(KxApi::IKxImage& image);

    KxApi::CKxApiAutoInitTerm m_sdk; // filers need it
    std::string m_prefix;
    std::string m_suffix;
    size_t m_digits = 0;
    KxApi::EKxStillImageFileType_t m_type = KxApi::KxStillImageFileType_Raw;
    KxApi::CKxAutoPtr<KxApi::IKxFilerReleasable, KxApi::IKxStillImageFiler> m_filer;
    bool m_convertsAll = false;
    KxApi::CKxAutoPtr<KxApi::IKxConverterReleasable> m_converter;
    KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer> m_converted;
    KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer> m_decoded;
};

} // namespace Kx
