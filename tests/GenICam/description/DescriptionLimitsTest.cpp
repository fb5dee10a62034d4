// SPDX-License-Identifier: Apache-2.0
// Files made to hurt: deep, long, or far larger than they look.
#include "DescriptionTestSupport.h"
#include "description/Limits.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::HasSubstr;

std::string Repeat(std::string_view text, size_t count)
{
    std::string result;
    result.reserve(text.size() * count);
    for (size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string Chain(size_t count, const std::string& last)
{
    std::string nodes;
    for (size_t i = 0; i + 1 < count; ++i)
        nodes += "<Integer Name='N" + std::to_string(i) + "'><pValue>N" + std::to_string(i + 1) +
                 "</pValue></Integer>\n";
    return nodes + "<Integer Name='N" + std::to_string(count - 1) + "'>" + last + "</Integer>";
}

TEST(DescriptionLimits, LongChainsAreReadAndWalked)
{
    const auto description = ReadNodes(Chain(100000, "<Value>1</Value>"));
    EXPECT_EQ(description->NodeCount(), 100000u);
    EXPECT_EQ(description->Dependents(description->FindNode("N99999")).size(), 1u);
    EXPECT_EQ(ReadDescription(WriteXml(*description))->NodeCount(), 100000u);
    EXPECT_EQ(ExtractSubtree(*description, 50000)->NodeCount(), 50001u);
    EXPECT_THAT(ErrorOfNodes(Chain(100000, "<pValue>N0</pValue>")),
                HasSubstr("N0 -> N1 -> N2 -> N3 -> N4 -> N5 -> ... -> N0"));
}

TEST(DescriptionLimits, DepthIsBounded)
{
    const auto nested = [](std::string_view element, size_t depth) {
        return Repeat("<" + std::string(element) + ">", depth) +
               Repeat("</" + std::string(element) + ">", depth);
    };
    EXPECT_EQ(ErrorOfNodes(nested("Group", kMaxNesting)), "nothing");
    EXPECT_THAT(ErrorOfNodes(nested("Group", 100000)), HasSubstr("65 nested groups exceed the limit of 64"));
    EXPECT_EQ(ErrorOfNodes("<Extension>" + nested("a", 200000) + "</Extension>"), "nothing");
    EXPECT_THAT(ErrorOfNodes("<Integer Name='I'><Value>" + nested("a", 200000) + "</Value></Integer>"),
                HasSubstr("where only text may stand"));
    const std::string deep =
        Doc("<Integer Name='I'><Extension>" + nested("a", 200000) + "</Extension><Value>1</Value></Integer>");
    EXPECT_EQ(ErrorOf([&] { ReadDescription(deep, deep); }), "nothing");
    EXPECT_THAT(ErrorOf([&] { ReadDescription(Doc(""), Doc(nested("Group", 100000))); }),
                HasSubstr("65 nested groups exceed the limit of 64"));
}

TEST(DescriptionLimits, SizesAreBounded)
{
    EXPECT_THAT(ErrorOf([] { ReadDescription(std::string(kMaxContentBytes + 1, ' ')); }),
                HasSubstr("67108865 bytes exceed the limit of 67108864"));
    EXPECT_THAT(ErrorOf([] { ReadDescription(Repeat("<a/>", kMaxTags + 1)); }),
                HasSubstr("8388609 tags exceed the limit of 8388608"));
    std::string entries;
    for (size_t i = 0; i <= kMaxNodes; ++i)
        entries += "<Node Name='N" + std::to_string(i) + "'/>";
    EXPECT_THAT(ErrorOfNodes(entries), HasSubstr("1048577 nodes exceed the limit of 1048576"));
}

// What is inherited counts as often as it is inherited.
TEST(DescriptionLimits, MultipliedElementsAreBounded)
{
    std::string entries;
    for (int i = 0; i < 3000; ++i)
        entries += "StructEntry E" + std::to_string(i) + " { Bit 1 }";
    EXPECT_THAT(ErrorOf([&] {
                    ReadOutline("Port Device { } Integer I { Value 1 } StructReg S { at 0x10 4 RW; " +
                                Repeat("pInvalidator I; ", 3000) + "Big; " + entries + " }");
                }),
                HasSubstr("elements exceed the limit of 4194304"));
    std::string expressions;
    for (int i = 0; i < 3000; ++i)
        expressions += "Expression[Name=E" + std::to_string(i) + "] 1; ";
    EXPECT_THAT(ErrorOf([&] {
                    ReadOutline("Integer I { Value 1 } SwissKnife S { " +
                                Repeat("pVariable[Name=V] I; ", 3000) + expressions + "Formula 1 }");
                }),
                HasSubstr("elements exceed the limit of 4194304"));
}

// One node that all others depend on, named many times over by each.
TEST(DescriptionLimits, ManyReferencesToOneNodeCostNoMoreThanTheirNumber)
{
    std::string nodes = "Port Device { } IntReg Shared { at 0 4 RW; Little }";
    for (int i = 0; i < 20000; ++i)
        nodes += "Integer I" + std::to_string(i) + " { pIsAvailable Shared; pValue Shared; pMax Shared }";
    const auto description = ReadOutline(nodes);
    EXPECT_EQ(description->Dependents(description->FindNode("Shared")).size(), 20000u);
}

} // namespace
} // namespace KxGenApi
