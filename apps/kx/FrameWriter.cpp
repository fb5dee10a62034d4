// SPDX-License-Identifier: Apache-2.0
#include "FrameWriter.h"

#include "ImageFileType.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/IKxStream.h>

#include <filesystem>
#include <regex>

using namespace KxApi;

namespace Kx
{

FrameWriter::FrameWriter(const std::string& output, const std::string& format)
    : m_filer(CreateIKxFiler(KxFilerType_StillImage))
    , m_convertsAll(!format.empty())
    , m_converter(CreateIKxConverter(KxConverterType_PixelFormat))
    , m_converted(CreateIKxImageBuffer(nullptr))
    , m_decoded(CreateIKxImageBuffer(nullptr))
{
    m_converter->SetBayerInterpolationMethod(KxBayerInterpolationMethod_Bilinear3);
    if (m_convertsAll) {
        const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfoByName(format.c_str());
        if (!pInfo)
            throw INVALID_ARGUMENT_EXCEPTION("'%s' is no pixel format", format.c_str());
        m_converter->SetDestinationPixelFormat(pInfo->GetPixelFormat());
    } else {
        m_converter->SetAutoDestination(true);
    }

    static const std::regex kNumber("([^%]*)%(?:0([1-9]))?d([^%]*)");
    std::string pattern = output;
    if (std::filesystem::is_directory(output))
        pattern = (std::filesystem::path(output) / "frame-%06d.kxraw").string();
    std::smatch parts;
    if (!std::regex_match(pattern, parts, kNumber))
        throw INVALID_ARGUMENT_EXCEPTION(
            "'%s' is neither a folder nor a name with one %%d or %%04d for the number", output.c_str());
    m_prefix = parts[1];
    m_digits = parts[2].matched ? static_cast<size_t>(parts[2].str()[0] - '0') : 0;
    m_suffix = parts[3];
    m_type = FileTypeOf(PathOf(0));
}

std::string FrameWriter::PathOf(uint64_t number) const
{
    std::string digits = std::to_string(number);
    if (digits.size() < m_digits)
        digits.insert(0, m_digits - digits.size(), '0');
    return m_prefix + digits + m_suffix;
}

IKxImage* FrameWriter::Savable(IKxImage& image)
{
    if (!m_convertsAll && m_filer->IsSavable(image.GetImagePixelFormat(), m_type))
        return &image;
    m_converter->Convert(&image, m_converted.Get());
    return m_converted->GetIKxImage();
}

void FrameWriter::Write(IKxStreamImage& image, uint64_t number)
{
    IKxImage* pImage = &image;
    if (image.GetEncodedSize() > 0) {
        m_filer->LoadFromMemory(m_decoded.Get(), image.GetEncodedData(), image.GetEncodedSize());
        pImage = m_decoded->GetIKxImage();
    }
    m_filer->Save(Savable(*pImage), m_type, PathOf(number).c_str());
}

} // namespace Kx
