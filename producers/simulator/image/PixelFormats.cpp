// SPDX-License-Identifier: Apache-2.0

#include "PixelFormats.h"

#include "Common.h"

#include <cstring>

namespace KxSim
{
namespace
{

// clang-format off
constexpr CPixelFormat kFormats[] = {
    {"Mono8",                   0x01080001, EPacking::Unpacked,   8, ""},
    {"Mono10",                  0x01100003, EPacking::Unpacked,  10, ""},
    {"Mono10Packed",            0x010C0004, EPacking::Gev,       10, ""},
    {"Mono10p",                 0x010A0046, EPacking::Lsb,       10, ""},
    {"Mono12",                  0x01100005, EPacking::Unpacked,  12, ""},
    {"Mono12Packed",            0x010C0006, EPacking::Gev,       12, ""},
    {"Mono12p",                 0x010C0047, EPacking::Lsb,       12, ""},
    {"Mono14",                  0x01100025, EPacking::Unpacked,  14, ""},
    {"Mono16",                  0x01100007, EPacking::Unpacked,  16, ""},
    {"BayerRG8",                0x01080009, EPacking::Unpacked,   8, ""},
    {"BayerRG10",               0x0110000D, EPacking::Unpacked,  10, ""},
    {"BayerRG10Packed",         0x010C0027, EPacking::Gev,       10, ""},
    {"BayerRG10p",              0x010A0058, EPacking::Lsb,       10, ""},
    {"BayerRG12",               0x01100011, EPacking::Unpacked,  12, ""},
    {"BayerRG12Packed",         0x010C002B, EPacking::Gev,       12, ""},
    {"BayerRG12p",              0x010C0059, EPacking::Lsb,       12, ""},
    {"BayerRG16",               0x0110002F, EPacking::Unpacked,  16, ""},
    {"RGB8",                    0x02180014, EPacking::Colours,    8, "RGB"},
    {"BGR8",                    0x02180015, EPacking::Colours,    8, "BGR"},
    {"RGBa8",                   0x02200016, EPacking::Colours,    8, "RGBa"},
    {"BGRa8",                   0x02200017, EPacking::Colours,    8, "BGRa"},
    {"RGB10p32",                0x0220001D, EPacking::Word32,    10, "RGB"},
    {"BGR10p32",                0x82200001, EPacking::Word32,    10, "BGR", false},
    {"YUV8_UYV",                0x02180020, EPacking::Colours,    8, "UYV"},
    {"YUV422_8",                0x02100032, EPacking::Group422,   8, "YUYV"},
    {"YUV422_8_UYVY",           0x0210001F, EPacking::Group422,   8, "UYVY"},
    {"YUV411_8_UYYVYY",         0x020C001E, EPacking::Group411,   8, "UYYVYY"},
    {"YCbCr411_8",              0x020C005A, EPacking::Group411,   8, "YYUYYV"},
    {"YUV420_8_Planar",         0x820C0152, EPacking::Planar420,  8, "YUV", false},
    {"PolarizedMono8",          0x81080200, EPacking::Unpacked,   8, "", false},
    {"PolarizedMono10",         0x81100201, EPacking::Unpacked,  10, "", false},
    {"PolarizedMono10p",        0x810A0202, EPacking::Lsb,       10, "", false},
    {"PolarizedMono10Packed",   0x810C0203, EPacking::Gev,       10, "", false},
    {"PolarizedMono12",         0x81100204, EPacking::Unpacked,  12, "", false},
    {"PolarizedMono12p",        0x810C0205, EPacking::Lsb,       12, "", false},
    {"PolarizedMono12Packed",   0x810C0206, EPacking::Gev,       12, "", false},
    {"PolarizedBayerRG8",       0x8108020E, EPacking::Unpacked,   8, "", false},
    {"PolarizedBayerRG10",      0x8110020F, EPacking::Unpacked,  10, "", false},
    {"PolarizedBayerRG10p",     0x810A0210, EPacking::Lsb,       10, "", false},
    {"PolarizedBayerRG10Packed",0x810C0211, EPacking::Gev,       10, "", false},
    {"PolarizedBayerRG12",      0x81100212, EPacking::Unpacked,  12, "", false},
    {"PolarizedBayerRG12p",     0x810C0213, EPacking::Lsb,       12, "", false},
    {"PolarizedBayerRG12Packed",0x810C0214, EPacking::Gev,       12, "", false},
};
// clang-format on

} // namespace

const CPixelFormat& FormatOfName(const char* name)
{
    for (const CPixelFormat& format : kFormats) {
        if (std::strcmp(format.name, name) == 0)
            return format;
    }
    Fail(GenTL::GC_ERR_ERROR, "There is no pixel format '%s'", name);
}

const CPixelFormat* FormatOfCode(uint32_t code)
{
    for (const CPixelFormat& format : kFormats) {
        if (format.code == code)
            return &format;
    }
    return nullptr;
}

} // namespace KxSim
