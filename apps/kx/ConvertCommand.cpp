// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "ImageFileType.h"
#include "Output.h"

#include <Base/GCException.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

using namespace KxApi;

namespace Kx
{

namespace
{

using Buffer = CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer>;
using Filer = CKxAutoPtr<IKxFilerReleasable>;
using Converter = CKxAutoPtr<IKxConverterReleasable>;

const std::map<std::string, EKxBayerInterpolationMethod_t> kBayerMethods = {
    {"off", KxBayerInterpolationMethod_Off},
    {"nearest", KxBayerInterpolationMethod_NearestNeighbor},
    {"nearest2", KxBayerInterpolationMethod_NearestNeighbor2},
    {"bilinear", KxBayerInterpolationMethod_Bilinear},
    {"bilinear2", KxBayerInterpolationMethod_Bilinear2},
    {"bilinear3", KxBayerInterpolationMethod_Bilinear3},
    {"bicubic", KxBayerInterpolationMethod_Bicubic},
    {"mono", KxBayerInterpolationMethod_Mono},
};

const std::map<std::string, EKxBitExpansionMode_t> kBitExpansions = {
    {"full", KxBitExpansionMode_FullRange},
    {"zeros", KxBitExpansionMode_ZeroFill},
    {"off", KxBitExpansionMode_Off},
};

const std::map<std::string, EKxPolarizationImageTransformationMethod_t> kPolarizations = {
    {"off", KxPolarizationImageTransformationMethod_Off},
    {"intensity", KxPolarizationImageTransformationMethod_Intensity},
    {"0", KxPolarizationImageTransformationMethod_Angle0},
    {"45", KxPolarizationImageTransformationMethod_Angle45},
    {"90", KxPolarizationImageTransformationMethod_Angle90},
    {"135", KxPolarizationImageTransformationMethod_Angle135},
    {"dolp", KxPolarizationImageTransformationMethod_DoLP},
    {"aolp", KxPolarizationImageTransformationMethod_AoLP},
    {"adolp", KxPolarizationImageTransformationMethod_ADOLP},
    {"views", KxPolarizationImageTransformationMethod_FourViews},
};

struct Options
{
    std::string input;
    std::string output;
    std::string format;
    std::optional<EKxBayerInterpolationMethod_t> bayer;
    std::optional<EKxBitExpansionMode_t> bits;
    std::optional<EKxPolarizationImageTransformationMethod_t> polarization;
    std::optional<double> gamma;
    bool reverseY = false;
    std::optional<uint32_t> quality;
    std::optional<uint32_t> compression;

    bool AskForConversion() const
    {
        return !format.empty() || bayer || bits || polarization || gamma || reverseY;
    }
};

std::string CheckFormat(const std::string& name)
{
    return GetIKxPixelFormatInfoByName(name.c_str()) ? "" : "'" + name + "' is no pixel format";
}

std::string NameOf(const IKxImage& image)
{
    return GetIKxPixelFormatInfo(image.GetImagePixelFormat())->GetName().c_str();
}

std::string Describe(const std::string& file, const IKxImage& image)
{
    return file + ": " + NameOf(image) + ", " + std::to_string(image.GetImageWidth()) + " x " +
           std::to_string(image.GetImageHeight());
}

void SetDestination(IKxPixelFormatConverter& converter, const std::string& format, const IKxImage& source)
{
    if (format.empty()) {
        converter.SetAutoDestination(true);
        return;
    }
    const auto destination = GetIKxPixelFormatInfoByName(format.c_str())->GetPixelFormat();
    if (!converter.IsConvertible(source.GetImagePixelFormat(), destination))
        throw INVALID_ARGUMENT_EXCEPTION("%s can't be converted to %s", NameOf(source).c_str(),
                                         format.c_str());
    converter.SetDestinationPixelFormat(destination);
}

Converter MakeConverter(const Options& options, const IKxImage& source)
{
    Converter converter(CreateIKxConverter(KxConverterType_PixelFormat));
    converter->SetConversionOption(static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, 8U)));
    // A file is looked at more closely than a live image.
    converter->SetBayerInterpolationMethod(options.bayer.value_or(KxBayerInterpolationMethod_Bilinear3));
    if (options.bits)
        converter->SetBitExpansionMode(*options.bits);
    if (options.polarization)
        converter->SetPolarizationImageTransformationMethod(*options.polarization);
    if (options.gamma)
        converter->SetGamma(*options.gamma);
    converter->SetReverseY(options.reverseY);
    SetDestination(*converter, options.format, source);
    return converter;
}

void RunConvert(const Options& options)
{
    // Before the work, not after it.
    const EKxStillImageFileType_t type = FileTypeOf(options.output);
    const CKxApiAutoInitTerm sdk;
    const Filer filer(CreateIKxFiler(KxFilerType_StillImage));
    if (options.quality)
        filer->SetJpegQuality(*options.quality);
    if (options.compression)
        filer->SetPngCompression(*options.compression);

    Buffer image(CreateIKxImageBuffer(nullptr));
    filer->Load(image.Get(), options.input.c_str());
    const std::string before = Describe(options.input, *image->GetIKxImage());
    if (options.AskForConversion() || !filer->IsSavable(image->GetIKxImage()->GetImagePixelFormat(), type)) {
        Buffer converted(CreateIKxImageBuffer(nullptr));
        MakeConverter(options, *image->GetIKxImage())->Convert(image->GetIKxImage(), converted.Get());
        image = std::move(converted);
    }
    filer->Save(image->GetIKxImage(), type, options.output.c_str());
    std::cout << before << " -> " << Describe(options.output, *image->GetIKxImage()) << "\n";
    Finish(std::cout);
}

void AddConversionOptions(CLI::App& command, Options& options)
{
    command
        .add_option("--format", options.format,
                    "Pixel format of OUT, such as RGB8, Mono12 or BGR16; if not given, that of IN where no "
                    "option asks for a conversion and the type of OUT holds it, else Mono8 or BGR8")
        ->check(CLI::Validator(CheckFormat, "FORMAT"));
    command
        .add_option("--bayer", options.bayer, "How a Bayer mosaic becomes colours; bilinear3 if not given")
        ->transform(CLI::CheckedTransformer(kBayerMethods, CLI::ignore_case));
    command.add_option("--bits", options.bits, "How values get more bits; full if not given")
        ->transform(CLI::CheckedTransformer(kBitExpansions, CLI::ignore_case));
    command.add_option("--polarization", options.polarization, "What is shown of a polarised image")
        ->transform(CLI::CheckedTransformer(kPolarizations, CLI::ignore_case));
    command.add_option("--gamma", options.gamma, "Exponent, below 1 lightens")->check(CLI::Range(0.1, 10.0));
    command.add_flag("--reverse-y", options.reverseY, "Turns the image upside down");
}

} // namespace

void AddConvertCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("convert", "Writes an image file as another type or in another pixel format");
    command->add_option("IN", options->input, "BMP, JPEG, TIFF, PNG or kxraw file; recognised by its content")
        ->required();
    command
        ->add_option("OUT", options->output,
                     "File to write: .bmp, .jpg, .tif, .png, .csv or .kxraw; it appears only when complete")
        ->required();
    AddConversionOptions(*command, *options);
    command->add_option("--quality", options->quality, "Of JPEG files; 90 if not given")
        ->check(CLI::Range(1, 100));
    command->add_option("--compression", options->compression, "Of PNG files; 1 if not given")
        ->check(CLI::Range(0, 9));
    command->callback([options] { RunConvert(*options); });
}

} // namespace Kx
