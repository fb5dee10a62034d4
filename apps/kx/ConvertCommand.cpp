// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "FeatureSetting.h"
#include "ImageFileType.h"
#include "Output.h"

#include <Base/GCException.h>
#include <GenApi/GenApi.h>
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
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

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
    std::vector<std::string> settings;
    bool listSettings = false;
    std::optional<uint32_t> quality;
    std::optional<uint32_t> compression;

    bool AskForConversion() const
    {
        return !format.empty() || !settings.empty() || bayer || bits || polarization || gamma || reverseY;
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

/// Values that a setting can have: names, or from least to greatest.
std::string ChoicesOf(GenApi::INode& node)
{
    std::string choices;
    if (auto* const enumeration = dynamic_cast<GenApi::IEnumeration*>(&node)) {
        GenApi::StringList_t names;
        enumeration->GetSymbolics(names);
        for (const GenICam::gcstring& name : names)
            choices += std::string(choices.empty() ? "" : ", ") + name.c_str();
    } else if (auto* const integer = dynamic_cast<GenApi::IInteger*>(&node)) {
        choices = std::to_string(integer->GetMin()) + " to " + std::to_string(integer->GetMax());
    } else if (auto* const number = dynamic_cast<GenApi::IFloat*>(&node)) {
        std::ostringstream text;
        text << number->GetMin() << " to " << number->GetMax();
        choices = text.str();
    } else if (dynamic_cast<GenApi::IBoolean*>(&node)) {
        choices = "0, 1";
    }
    return choices;
}

void ListSettings()
{
    const CKxApiAutoInitTerm sdk;
    const Converter converter(CreateIKxConverter(KxConverterType_PixelFormat));
    GenApi::NodeList_t nodes;
    converter->GetINodeMap()->GetNodes(nodes);
    for (GenApi::INode* const node : nodes) {
        auto* const value = dynamic_cast<GenApi::IValue*>(node);
        if (value && node->IsFeature() && node->GetPrincipalInterfaceType() != GenApi::intfICategory)
            std::cout << node->GetName() << "=" << value->ToString() << "  (" << ChoicesOf(*node) << ")\n";
    }
    Finish(std::cout);
}

/// By names and values of the converter's own nodes.
void ApplySettings(IKxPixelFormatConverter& converter, const std::vector<std::string>& settings)
{
    GenApi::INodeMap& map = *converter.GetINodeMap();
    for (const std::string& setting : settings) {
        const std::string name = setting.substr(0, setting.find('='));
        if (!map.GetNode(name.c_str()))
            throw INVALID_ARGUMENT_EXCEPTION(
                "the converter has no setting '%s'; kx convert --settings lists them", name.c_str());
    }
    KxApps::Apply(KxApps::ParseSettings(map, settings));
}

bool HasColorMap(const IKxPixelFormatConverterInside& converter)
{
    return converter.GetColorMapType() != KxColorMapType_Normal || converter.GetColorMapInversion() ||
           converter.GetColorMapPhase() != 0;
}

bool IsSet(const std::vector<std::string>& settings, const std::string& name)
{
    return std::any_of(settings.begin(), settings.end(), [&](const std::string& setting) {
        return setting.compare(0, name.size() + 1, name + "=") == 0;
    });
}

void SetDestination(IKxPixelFormatConverterInside& converter, const Options& options, const IKxImage& source)
{
    // A map's colours show in a format with colour only.
    const bool isSet = IsSet(options.settings, "DestinationPixelFormat") || HasColorMap(converter);
    if (options.format.empty() && !isSet)
        return converter.SetAutoDestination(true);
    const auto destination = options.format.empty()
                                 ? converter.GetDestinationPixelFormat()
                                 : GetIKxPixelFormatInfoByName(options.format.c_str())->GetPixelFormat();
    if (!converter.IsConvertible(source.GetImagePixelFormat(), destination))
        throw INVALID_ARGUMENT_EXCEPTION("%s can't be converted to %s", NameOf(source).c_str(),
                                         GetIKxPixelFormatInfo(destination)->GetName().c_str());
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
    ApplySettings(*converter, options.settings);
    SetDestination(*converter, options, source);
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
    command
        .add_option("--set", options.settings,
                    "Any setting of the converter by its name and value, such as "
                    "PolarizationSpecifiedAngle=30 or ColorMapType=PseudoColor_BGR; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command.add_flag("--settings", options.listSettings,
                     "Lists the converter's settings with their first values and what they can be");
    command.add_flag("--reverse-y", options.reverseY, "Turns the image upside down");
}

} // namespace

void AddConvertCommand(CLI::App& program)
{
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("convert", "Writes an image file as another type or in another pixel format");
    command->add_option("IN", options->input,
                        "BMP, JPEG, TIFF, PNG or kxraw file; recognised by its content");
    command->add_option(
        "OUT", options->output,
        "File to write: .bmp, .jpg, .tif, .png, .csv or .kxraw; it appears only when complete");
    AddConversionOptions(*command, *options);
    command->add_option("--quality", options->quality, "Of JPEG files; 90 if not given")
        ->check(CLI::Range(1, 100));
    command->add_option("--compression", options->compression, "Of PNG files; 1 if not given")
        ->check(CLI::Range(0, 9));
    command->callback([options] {
        if (options->listSettings)
            return ListSettings();
        if (options->output.empty())
            throw CLI::RequiredError(options->input.empty() ? "IN" : "OUT");
        RunConvert(*options);
    });
}

} // namespace Kx
