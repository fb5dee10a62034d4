// SPDX-License-Identifier: Apache-2.0
#include "ImageWriter.h"

#include "FileNames.h"
#include "ImageDecoder.h"
#include "SavableFormat.h"
#include "SequenceWriter.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <filesystem>
#include <system_error>

using namespace KxApi;

namespace KxApps
{

namespace
{

using Buffer = CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer>;

/// A file of its own for each image.
class PictureWriter final : public ImageWriter
{
public:
    explicit PictureWriter(const ImageOutput& output)
        : m_names(output.name, output.isOneImage)
        , m_filer(CreateIKxFiler(KxFilerType_StillImage))
        , m_convertsAll(!output.format.empty())
        , m_converter(CreateIKxConverter(KxConverterType_PixelFormat))
        , m_converted(CreateIKxImageBuffer(nullptr))
    {
        m_converter->SetBayerInterpolationMethod(KxBayerInterpolationMethod_Bilinear3);
        if (!m_convertsAll)
            return;
        const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfoByName(output.format.c_str());
        if (!pInfo)
            throw INVALID_ARGUMENT_EXCEPTION("'%s' is no pixel format", output.format.c_str());
        m_converter->SetDestinationPixelFormat(pInfo->GetPixelFormat());
    }

    uint64_t Write(const StoredImage& image, uint64_t number) override
    {
        IKxImage* const pImage =
            image.IsEncoded() ? m_decoder.Decode(image.Data(), image.Size()) : &image.Image();
        const std::string path = m_names.Of(number);
        m_filer->Save(Savable(*pImage), m_names.Type(), path.c_str());
        std::error_code error;
        const auto size = std::filesystem::file_size(path, error);
        return error ? 0 : size;
    }

private:
    IKxImage* Savable(IKxImage& image)
    {
        const auto format = image.GetImagePixelFormat();
        if (!m_convertsAll) {
            if (m_filer->IsSavable(format, m_names.Type()))
                return &image;
            m_converter->SetDestinationPixelFormat(
                ConvertedFormat(*m_filer, *m_converter, format, m_names.Type()));
        }
        m_converter->Convert(&image, m_converted.Get());
        return m_converted->GetIKxImage();
    }

    const CKxApiAutoInitTerm m_sdk; // filers need it
    const FileNames m_names;
    const CKxAutoPtr<IKxFilerReleasable, IKxStillImageFiler> m_filer;
    const bool m_convertsAll;
    const CKxAutoPtr<IKxConverterReleasable> m_converter;
    const Buffer m_converted;
    ImageDecoder m_decoder;
};

/// All images into one file.
class OneFileWriter final : public ImageWriter
{
public:
    explicit OneFileWriter(const std::string& path)
        : m_file(path)
    {}
    uint64_t Write(const StoredImage& image, uint64_t) override
    {
        const uint64_t before = m_file.Size();
        m_file.Add(image);
        return m_file.Size() - before;
    }
    void Finish() override { m_file.Finish(); }

private:
    SequenceWriter m_file;
};

bool IsOneFile(const ImageOutput& output)
{
    const bool isSequence = std::filesystem::path(output.name).extension() == SequenceWriter::kEnding;
    if (isSequence && !output.format.empty())
        throw INVALID_ARGUMENT_EXCEPTION("'%s' takes images as they are: --format is for pictures",
                                         output.name.c_str());
    return isSequence;
}

} // namespace

void ImageOutput::Check() const
{
    if (!IsOneFile(*this))
        const PictureWriter writer(*this);
}

std::vector<std::unique_ptr<ImageWriter>> ImageOutput::Open() const
{
    std::vector<std::unique_ptr<ImageWriter>> writers;
    if (IsOneFile(*this)) {
        writers.push_back(std::make_unique<OneFileWriter>(name));
        return writers;
    }
    for (unsigned i = 0; i < writerCount; ++i)
        writers.push_back(std::make_unique<PictureWriter>(*this));
    return writers;
}

} // namespace KxApps
