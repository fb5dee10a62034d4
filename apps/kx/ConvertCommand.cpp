// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Counted.h"
#include "FeatureSetting.h"
#include "FileNames.h"
#include "ImageFileType.h"
#include "Output.h"
#include "SavableFormat.h"
#include "SequenceReader.h"

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
#include <regex>
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
    std::string images; // of a sequence: "3" or "3-5"

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

EKxPixelFormatNamingConvention_t Destination(const IKxPixelFormatConverterInside& converter,
                                             const Options& options)
{
    return options.format.empty() ? converter.GetDestinationPixelFormat()
                                  : GetIKxPixelFormatInfoByName(options.format.c_str())->GetPixelFormat();
}

void SetDestination(IKxPixelFormatConverterInside& converter, const Options& options,
                    const IKxStillImageFiler& filer, EKxStillImageFileType_t type, const IKxImage& source)
{
    const auto format = source.GetImagePixelFormat();
    // A map's colours show in a format with colour only.
    const bool isSet = IsSet(options.settings, "DestinationPixelFormat") || HasColorMap(converter);
    if (!options.format.empty() || isSet) {
        const auto destination = Destination(converter, options);
        if (!converter.IsConvertible(format, destination))
            throw INVALID_ARGUMENT_EXCEPTION("%s can't be converted to %s", NameOf(source).c_str(),
                                             GetIKxPixelFormatInfo(destination)->GetName().c_str());
        return converter.SetDestinationPixelFormat(destination);
    }
    // The converter's own choice has 8 bits.
    const auto lossless = KxApps::ConvertedFormat(filer, converter, format, type);
    const auto& info = dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(format));
    if (info.GetEffectiveBits() <= 8)
        return converter.SetAutoDestination(true);
    if (info.IsPolarized() && options.polarization)
        throw INVALID_ARGUMENT_EXCEPTION(
            "what becomes of the %zu bits of %s has to be told by --format, such as Mono16, RGB16 or BGR8",
            info.GetEffectiveBits(), info.GetName().c_str());
    converter.SetDestinationPixelFormat(lossless);
}

Converter MakeConverter(const Options& options)
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
    return converter;
}

/// Converts and saves images as the options ask for.
class Conversion
{
public:
    Conversion(const Options& options, EKxStillImageFileType_t type)
        : m_options(options)
        , m_type(type)
        , m_filer(CreateIKxFiler(KxFilerType_StillImage))
        , m_converted(CreateIKxImageBuffer(nullptr))
    {
        if (options.quality)
            m_filer->SetJpegQuality(*options.quality);
        if (options.compression)
            m_filer->SetPngCompression(*options.compression);
    }

    IKxStillImageFiler& Filer() { return *m_filer; }

    /// Tells what was saved.
    std::string Save(IKxImage& image, const std::string& path)
    {
        IKxImage* pSaved = &image;
        if (m_options.AskForConversion() || !m_filer->IsSavable(image.GetImagePixelFormat(), m_type)) {
            if (!m_converter)
                m_converter = MakeConverter(m_options);
            SetDestination(*m_converter, m_options, *m_filer, m_type, image);
            m_converter->Convert(&image, m_converted.Get());
            pSaved = m_converted->GetIKxImage();
        }
        m_filer->Save(pSaved, m_type, path.c_str());
        return Describe(path, *pSaved);
    }

private:
    const Options& m_options;
    const EKxStillImageFileType_t m_type;
    const CKxAutoPtr<IKxFilerReleasable> m_filer;
    Converter m_converter; // when one is needed
    const Buffer m_converted;
};

struct Range
{
    size_t first;
    size_t last;
};

/// The images of a sequence that are asked for.
Range RangeOf(const std::string& text, size_t count)
{
    static const std::regex kRange("([0-9]{1,15})(?:-([0-9]{1,15}))?");
    if (count == 0)
        throw RUNTIME_EXCEPTION("there is no image in it");
    std::smatch parts;
    if (text.empty())
        return {0, count - 1};
    if (!std::regex_match(text, parts, kRange))
        throw INVALID_ARGUMENT_EXCEPTION("--images %s is neither a number nor a range such as 10-20",
                                         text.c_str());
    const Range range{std::stoull(parts[1]), std::stoull(parts[2].matched ? parts[2] : parts[1])};
    if (range.first > range.last || range.last >= count)
        throw OUT_OF_RANGE_EXCEPTION("--images %s: the images are 0 to %zu", text.c_str(), count - 1);
    return range;
}

void ListSequence(const KxApps::SequenceReader& sequence)
{
    std::cout << "# image\tframe ID\ttime of the camera, ns\ttime, ns since 1970\tpixel format\tsize\n";
    for (size_t i = 0; i < sequence.Count(); ++i) {
        const KxApps::SequenceReader::Entry entry = sequence.About(i);
        std::cout << i << "\t" << entry.notes.frameId << "\t" << entry.notes.timestampNs << "\t"
                  << entry.notes.hostNs << "\t";
        if (entry.isEncoded)
            std::cout << "JPEG\t";
        else
            std::cout << GetIKxPixelFormatInfo(entry.pixelFormat)->GetName() << "\t" << entry.width << "x"
                      << entry.height;
        std::cout << (entry.notes.isIncomplete ? "\tincomplete" : "") << "\n";
    }
    Finish(std::cout);
}

void Unpack(const KxApps::SequenceReader& sequence, const Options& options)
{
    const Range range = RangeOf(options.images, sequence.Count());
    const KxApps::FileNames names(options.output, range.first == range.last);
    Conversion conversion(options, names.Type());
    const Buffer image(CreateIKxImageBuffer(nullptr));
    for (size_t i = range.first; i <= range.last; ++i) {
        sequence.Read(i, *image);
        conversion.Save(*image->GetIKxImage(), names.Of(i));
    }
    std::cout << options.input << ": " << range.last - range.first + 1 << " of "
              << KxApps::Counted(sequence.Count(), "image") << " -> " << names.Of(range.first)
              << (range.first == range.last ? "\n" : " and on\n");
    Finish(std::cout);
}

void ConvertSequence(const Options& options)
{
    const KxApps::SequenceReader sequence(options.input);
    if (!sequence.IsComplete())
        std::cerr << options.input << " wasn't finished; it holds "
                  << KxApps::Counted(sequence.Count(), "whole image") << "\n";
    if (options.output.empty())
        ListSequence(sequence);
    else
        Unpack(sequence, options);
}

void RunConvert(const Options& options)
{
    const CKxApiAutoInitTerm sdk;
    if (KxApps::SequenceReader::IsSequence(options.input))
        return ConvertSequence(options);
    if (options.output.empty())
        throw CLI::RequiredError("OUT");
    if (!options.images.empty())
        throw INVALID_ARGUMENT_EXCEPTION("--images: '%s' holds one image", options.input.c_str());
    // Before the work, not after it.
    Conversion conversion(options, KxApps::FileTypeOf(options.output));
    const Buffer image(CreateIKxImageBuffer(nullptr));
    conversion.Filer().Load(image.Get(), options.input.c_str());
    const std::string before = Describe(options.input, *image->GetIKxImage());
    const std::string after = conversion.Save(*image->GetIKxImage(), options.output);
    std::cout << before << " -> " << after << "\n";
    Finish(std::cout);
}

void AddConversionOptions(CLI::App& command, Options& options)
{
    command
        .add_option("--format", options.format,
                    "Pixel format of OUT, such as RGB8, Mono12 or BGR16; if not given, that of IN where no "
                    "option asks for a conversion and the type of OUT holds it, else one that keeps all bits")
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
                        "BMP, JPEG, TIFF, PNG, kxraw or kxseq file; recognised by its content");
    command->add_option(
        "OUT", options->output,
        "File to write: .bmp, .jpg, .tif, .png, .csv or .kxraw; it appears only when complete. For the "
        "images of "
        "a kxseq file a name with %d or %04d for the number, or a folder; without it they are listed");
    command->add_option("--images", options->images,
                        "Which images of a kxseq file, such as 5 or 10-20; all if not given");
    AddConversionOptions(*command, *options);
    command->add_option("--quality", options->quality, "Of JPEG files; 90 if not given")
        ->check(CLI::Range(1, 100));
    command->add_option("--compression", options->compression, "Of PNG files; 1 if not given")
        ->check(CLI::Range(0, 9));
    command->callback([options] {
        if (options->listSettings)
            return ListSettings();
        if (options->input.empty())
            throw CLI::RequiredError("IN");
        RunConvert(*options);
    });
}

} // namespace Kx
