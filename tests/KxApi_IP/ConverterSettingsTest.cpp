// SPDX-License-Identifier: Apache-2.0
// Settings of the converter: by operation and by node, which show the same.

#include "ConverterTestSupport.h"

#include <GenApi/GenApi.h>

#include <limits>

namespace
{

using namespace KxApi;
using namespace KxTest;

/// A setting by both roads; reals are told in tenths.
struct Setting
{
    const char* name;
    int64_t initial, other;
    int64_t below, above; ///< just outside the range; the initial value where the road can't tell one
    std::function<int64_t(IKxPixelFormatConverterInside&)> get;
    std::function<void(IKxPixelFormatConverterInside&, int64_t)> set;
};

#define KX_SETTING(Name, Type, initial, other, below, above)                                                 \
    {                                                                                                        \
#Name, initial, other, below, above,                                                                 \
            [](IKxPixelFormatConverterInside& c) { return static_cast<int64_t>(c.Get##Name()); },            \
            [](IKxPixelFormatConverterInside& c, int64_t v) { c.Set##Name(static_cast<Type>(v)); }       \
    }

const Setting kSettings[] = {
    KX_SETTING(DestinationPixelFormat, EKxPixelFormatNamingConvention_t, KxPixelFormat_BGR8,
               KxPixelFormat_BGR10p32, KxPixelFormat_BayerRG8, 0x7FFFFFFF),
    KX_SETTING(BayerInterpolationMethod, EKxBayerInterpolationMethod_t, 3, 7, -1, 8),
    KX_SETTING(ReverseY, bool, 0, 1, 0, 0),
    {"Gamma", 10, 5, 0, 101, [](auto& c) { return static_cast<int64_t>(c.GetGamma() * 10); },
     [](auto& c, int64_t v) { c.SetGamma(static_cast<double>(v) / 10); }},
    KX_SETTING(BitExpansionMode, EKxBitExpansionMode_t, 0, 2, -1, 3),
    KX_SETTING(PolarizationImageTransformationMethod, EKxPolarizationImageTransformationMethod_t, 0, 6, -1,
               11),
    {"PolarizationSpecifiedAngle", 0, 455, -1, 1801,
     [](auto& c) { return static_cast<int64_t>(c.GetPolarizationSpecifiedAngle() * 10); },
     [](auto& c, int64_t v) { c.SetPolarizationSpecifiedAngle(static_cast<double>(v) / 10); }},
    KX_SETTING(PolarizationSpecifiedAngleInterpolationMethod, EKxPolarizationInterpolationMethod_t, 0, 1, -1,
               2),
    KX_SETTING(ADOLPDarkMode, bool, 0, 1, 0, 0),
    KX_SETTING(ADOLPColorInversion, bool, 0, 1, 0, 0),
    KX_SETTING(ADOLPColorPhase, int32_t, 0, 255, -1, 256),
    KX_SETTING(ColorMapType, EKxColorMapType_t, 0, 2, -1, 3),
    KX_SETTING(ColorMapInversion, bool, 0, 1, 0, 0),
    KX_SETTING(ColorMapPhase, int32_t, 0, 255, -1, 256),
};

/// A node's value as the table tells it.
int64_t NodeValue(GenApi::INode* node)
{
    if (auto* const value = dynamic_cast<GenApi::IFloat*>(node))
        return static_cast<int64_t>(value->GetValue() * 10);
    if (auto* const value = dynamic_cast<GenApi::IEnumeration*>(node))
        return value->GetIntValue();
    if (auto* const value = dynamic_cast<GenApi::IBoolean*>(node))
        return value->GetValue() ? 1 : 0;
    return dynamic_cast<GenApi::IInteger&>(*node).GetValue();
}

void SetNode(GenApi::INode* node, int64_t number)
{
    if (auto* const value = dynamic_cast<GenApi::IFloat*>(node))
        value->SetValue(static_cast<double>(number) / 10);
    else if (auto* const enumeration = dynamic_cast<GenApi::IEnumeration*>(node))
        enumeration->SetIntValue(number);
    else if (auto* const boolean = dynamic_cast<GenApi::IBoolean*>(node))
        boolean->SetValue(number != 0);
    else
        dynamic_cast<GenApi::IInteger&>(*node).SetValue(number);
}

TEST(ConverterSettings, NodesAndOperationsShowTheSameAndTellOfChanges)
{
    TestConverter test;
    IKxPixelFormatConverterInside& converter = *test.converter.Get();
    GenApi::INodeMap* const map = converter.GetINodeMap();
    ASSERT_EQ(converter.GetINodeMap(), map);
    for (const Setting& setting : kSettings) {
        SCOPED_TRACE(setting.name);
        GenApi::INode* const node = map->GetNode(setting.name);
        ASSERT_NE(node, nullptr);
        int calls = 0;
        int64_t seen = -1;
        const auto handle = GenApi::Register(
            node,
            [&](GenApi::INode*) {
                ++calls;
                seen = setting.get(converter);
            },
            GenApi::cbPostOutsideLock);
        EXPECT_EQ(setting.get(converter), setting.initial);
        EXPECT_EQ(NodeValue(node), setting.initial);

        setting.set(converter, setting.other);
        EXPECT_EQ(NodeValue(node), setting.other);
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(seen, setting.other);
        setting.set(converter, setting.other);
        EXPECT_EQ(calls, 1) << "no change, no callback";

        SetNode(node, setting.initial);
        EXPECT_EQ(setting.get(converter), setting.initial);
        EXPECT_EQ(calls, 2);
        EXPECT_EQ(seen, setting.initial);
        GenApi::Deregister(handle);
    }
}

TEST(ConverterSettings, ValuesOutsideTheRangeAreRefusedByBothRoads)
{
    TestConverter test;
    IKxPixelFormatConverterInside& converter = *test.converter.Get();
    for (const Setting& setting : kSettings) {
        for (const int64_t value : {setting.below, setting.above}) {
            if (value == setting.initial)
                continue;
            SCOPED_TRACE(std::string(setting.name) + " " + std::to_string(value));
            EXPECT_THROW(setting.set(converter, value), GenICam::GenericException);
            EXPECT_THROW(SetNode(converter.GetINodeMap()->GetNode(setting.name), value),
                         GenICam::GenericException);
            EXPECT_EQ(setting.get(converter), setting.initial);
        }
    }
    EXPECT_EQ(ErrorOf([&] { converter.SetColorMapPhase(256); }),
              "OutOfRange: ColorMapPhase = 256 must be equal or smaller than Max = 255");
    EXPECT_EQ(ErrorOf([&] { converter.SetGamma(std::numeric_limits<double>::quiet_NaN()); }),
              "OutOfRange: Gamma = nan must be greater than or equal 0.100000");
    EXPECT_EQ(ErrorOf([&] { converter.SetDestinationPixelFormat(KxPixelFormat_BayerRG8); }),
              "InvalidArgument: DestinationPixelFormat = 0x01080009 is no format that can be converted to");
    EXPECT_EQ(ErrorOf([&] { converter.SetConversionOption(0); }),
              "OutOfRange: nThreads = 0 must be equal or greater than Min = 1");
    EXPECT_EQ(ErrorOf([&] { converter.SetConversionOption(65); }),
              "OutOfRange: nThreads = 65 must be equal or smaller than Max = 64");
}

TEST(ConverterSettings, DestinationsThatWindowsCantShowAreOfferedOnDemand)
{
    TestConverter test;
    GenApi::INodeMap* const map = test->GetINodeMap();
    auto& all = dynamic_cast<GenApi::IInteger&>(*map->GetNode("AvailableUnvisibleDestinationPixelFomat"));
    auto& formats = dynamic_cast<GenApi::IEnumeration&>(*map->GetNode("DestinationPixelFormat"));
    const auto offered = [&](const char* name) { return GenApi::IsAvailable(formats.GetEntryByName(name)); };
    EXPECT_TRUE(offered("BGR12") && offered("RGB16") && offered("Mono10"));
    all.SetValue(0, true);
    EXPECT_FALSE(offered("BGR12") || offered("RGB16"));
    EXPECT_TRUE(offered("Mono10") && offered("RGB10p32") && offered("BGR10p32") && offered("BGRa8"));
    for (const auto format : kDestinations) {
        auto* const entry = formats.GetEntryByName(NameOf(format).c_str());
        ASSERT_NE(entry, nullptr) << NameOf(format);
        EXPECT_EQ(entry->GetValue(), static_cast<int64_t>(format));
        test->SetDestinationPixelFormat(format);
        EXPECT_EQ(formats.GetIntValue(), static_cast<int64_t>(format));
    }
}

TEST(ConverterSettings, WithoutTheSdkThereIsNoConverter)
{
    EXPECT_EQ(ErrorOf([] { CreateIKxConverter(0); }).substr(0, 12), "LogicalError");
}

} // namespace
