// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

#include <memory>
#include <string>

namespace KxSim
{
namespace
{

constexpr char kLocked[] = "(TLParamsLocked = 1)";
enum ECompression // entries of ImageCompressionMode
{
    kUncompressed,
    kJpeg
};
const std::vector<std::string> kReductions = {"BinningHorizontal", "BinningVertical", "DecimationHorizontal",
                                              "DecimationVertical"};

void DescribeSize(const CCameraModel& model, CFeatureList& list)
{
    const std::string stepX = std::to_string(kWidthStep), stepY = std::to_string(kHeightStep);
    list.Add(
        Integer("SensorWidth", "Width of the sensor").ReadOnly().Expert().Unit("px").Default(model.width));
    list.Add(
        Integer("SensorHeight", "Height of the sensor").ReadOnly().Expert().Unit("px").Default(model.height));
    list.Add(Integer("WidthMax", "Largest width of an image, after binning and decimation")
                 .ReadOnly()
                 .Expert()
                 .Unit("px")
                 .ChangedBy(kReductions));
    list.Add(Integer("HeightMax", "Largest height of an image, after binning and decimation")
                 .ReadOnly()
                 .Expert()
                 .Unit("px")
                 .ChangedBy(kReductions));
    list.Add(Integer("Width", "Width of the images")
                 .Range(stepX, "WidthLimit", stepX)
                 .Unit("px")
                 .Default(model.width)
                 .LockedIf(kLocked)
                 .ChangedBy(kReductions));
    list.Add(Integer("Height", "Height of the images")
                 .Range(stepY, "HeightLimit", stepY)
                 .Unit("px")
                 .Default(model.height)
                 .LockedIf(kLocked)
                 .ChangedBy(kReductions));
    list.Add(Integer("OffsetX", "Where the image begins on the sensor, from the left")
                 .Range("0", "OffsetXLimit", stepX)
                 .Unit("px")
                 .ChangedBy(kReductions));
    list.Add(Integer("OffsetY", "Where the image begins on the sensor, from the top")
                 .Range("0", "OffsetYLimit", stepY)
                 .Unit("px")
                 .ChangedBy(kReductions));
    const auto limit = [&](const std::string& name, const std::string& max, const std::string& used) {
        list.Raw("<IntSwissKnife Name=\"" + name + "\"><pVariable Name=\"MAX\">" + max +
                 "Reg</pVariable><pVariable Name=\"USED\">" + used +
                 "Reg</pVariable><Formula>MAX - USED</Formula></IntSwissKnife>\n");
    };
    limit("WidthLimit", "WidthMax", "OffsetX");
    limit("HeightLimit", "HeightMax", "OffsetY");
    limit("OffsetXLimit", "WidthMax", "Width");
    limit("OffsetYLimit", "HeightMax", "Height");
}

void DescribeImageFormat(const CCameraModel& model, CFeatureList& list)
{
    list.Category("ImageFormatControl", "Size and format of the images");
    DescribeSize(model, list);
    list.Add(Integer("BinningHorizontal", "Pixels that are averaged to one, in a line")
                 .Range("1", "2")
                 .Default(1)
                 .Expert()
                 .LockedIf(kLocked));
    list.Add(Integer("BinningVertical", "Lines that are averaged to one")
                 .Range("1", "2")
                 .Default(1)
                 .Expert()
                 .LockedIf(kLocked));
    list.Add(Integer("DecimationHorizontal", "Pixels of which only the first is sent, in a line")
                 .Range("1", "2")
                 .Default(1)
                 .Expert()
                 .LockedIf(kLocked));
    list.Add(Integer("DecimationVertical", "Lines of which only the first is sent")
                 .Range("1", "2")
                 .Default(1)
                 .Expert()
                 .LockedIf(kLocked));
    list.Add(Boolean("ReverseX", "Shows the scene mirrored left to right; the pattern of the pixels stays")
                 .Expert());
    list.Add(Boolean("ReverseY", "Shows the scene mirrored top to bottom; the pattern of the pixels stays")
                 .Expert());

    std::vector<CEntry> formats;
    for (const char* name : model.formats) {
        const CPixelFormat& format = FormatOfName(name);
        formats.push_back({name, format.code, "", !format.isStandard});
    }
    const int64_t first = formats.front().value;
    list.Add(
        Enumeration("PixelFormat", "Format of the pixels").Entries(formats).Default(first).LockedIf(kLocked));
    list.Add(
        Integer("PixelSize", "Bits of a pixel").ReadOnly().Expert().Unit("bit").ChangedBy({"PixelFormat"}));
    if (model.compresses) {
        list.Add(
            Enumeration("ImageCompressionMode", "How images are compressed")
                .Description("JPEG is made of colours in RGB8; PixelFormat is that of images that aren't "
                             "compressed.")
                .Entries({{"Off", kUncompressed, "Not at all"}, {"JPEG", kJpeg, "As JPEG files"}})
                .LockedIf(kLocked));
        list.Add(Integer("ImageCompressionQuality", "Quality of compressed images, 100 is best")
                     .Range("1", "100")
                     .Default(90)
                     .Unit("%")
                     .AvailableIf("(ImageCompressionMode = 1)"));
    }
    list.Add(Enumeration("TestPattern", "Puts computed values in the place of the scene")
                 .Entries({{"Off", 0, "The scene"},
                           {"Black", 1, "All 0"},
                           {"White", 2, "All at the largest value"},
                           {"GreyHorizontalRamp", 3,
                            "From 0 at the sensor's left edge to the largest value at its right"},
                           {"GreyVerticalRamp", 4,
                            "From 0 at the sensor's top to the largest value at its bottom"},
                           {"GreyHorizontalRampMoving", 5, "The ramp, moving as the scene does"},
                           {"ColorBar", 6, "White, yellow, cyan, green, magenta, red, blue, black"}}));
}

int Step(CRegisterMap& map, const char* direction)
{
    return static_cast<int>(map.GetInteger(std::string("Binning") + direction + "Reg") *
                            map.GetInteger(std::string("Decimation") + direction + "Reg"));
}

/// Sizes follow binning and decimation: the whole sensor is shown again.
void FitToSensor(CRegisterMap& map)
{
    const auto fit = [&](const char* sensor, const char* direction, int64_t step, const std::string& size,
                         const char* offset) {
        const int64_t max = map.GetInteger(sensor) / Step(map, direction) / step * step;
        if (map.GetInteger(size + "MaxReg") == max)
            return;
        map.SetInteger(size + "MaxReg", max);
        map.SetInteger(size + "Reg", max);
        map.SetInteger(offset, 0);
    };
    fit("SensorWidthReg", "Horizontal", kWidthStep, "Width", "OffsetXReg");
    fit("SensorHeightReg", "Vertical", kHeightStep, "Height", "OffsetYReg");
}

void BindImageFormat(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    FitToSensor(map);
    for (const std::string& name : kReductions) {
        map.At(name + "Reg").beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
        map.At(name + "Reg").afterWrite = [&](size_t) { FitToSensor(map); };
    }
    const auto checkWindow = [&](const std::string& size, const std::string& offset, int64_t step,
                                 bool isSize) {
        const std::string written = isSize ? size : offset;
        map.At(written + "Reg").afterWrite = [&map, size, offset, step, written](size_t) {
            const int64_t value = map.GetInteger(written + "Reg"), max = map.GetInteger(size + "MaxReg");
            const int64_t end = map.GetInteger(size + "Reg") + map.GetInteger(offset + "Reg");
            if (value % step != 0 || end > max || map.GetInteger(size + "Reg") < step)
                Fail(GenTL::GC_ERR_INVALID_VALUE,
                     "'%s' = %lld must be a multiple of %lld and keep the image within %lld pixels",
                     written.c_str(), static_cast<long long>(value), static_cast<long long>(step),
                     static_cast<long long>(max));
        };
        if (isSize)
            map.At(written + "Reg").beforeWrite = [&camera](size_t) { camera.RefuseWhileAcquiring(); };
    };
    checkWindow("Width", "OffsetX", kWidthStep, true);
    checkWindow("Width", "OffsetX", kWidthStep, false);
    checkWindow("Height", "OffsetY", kHeightStep, true);
    checkWindow("Height", "OffsetY", kHeightStep, false);
    map.At("PixelFormatReg").beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
    if (camera.Model().compresses)
        map.At("ImageCompressionModeReg").beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
    map.At("PixelSizeReg").beforeRead = [&](size_t) {
        const CPixelFormat* const format =
            FormatOfCode(static_cast<uint32_t>(map.GetInteger("PixelFormatReg")));
        map.SetInteger("PixelSizeReg", static_cast<int64_t>(format->BitsPerPixel()));
    };
}

} // namespace

const CFeatureGroup kImageFormatFeatures = {DescribeImageFormat, BindImageFormat};

int CCamera::JpegQuality()
{
    CRegisterMap& map = Registers();
    if (!m_model.compresses || map.GetInteger("ImageCompressionModeReg") != kJpeg)
        return 0;
    return static_cast<int>(map.GetInteger("ImageCompressionQualityReg"));
}

} // namespace KxSim
