// SPDX-License-Identifier: Apache-2.0
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

std::shared_ptr<const Description> Inject(const std::string& base, const std::string& injected)
{
    return ReadDescription(Doc(base), Doc(injected));
}

std::vector<std::string> Features(const Description& description, std::string_view category)
{
    std::vector<std::string> names;
    for (const Property& property : description.Properties(description.FindNode(category)))
        if (property.id == Prop::pFeature)
            names.emplace_back(property.text);
    return names;
}

TEST(Injection, AddsNodesAndUnitesLists)
{
    const auto both = Inject(
        "<Category Name='Root'><ToolTip>base</ToolTip><pFeature>A</pFeature></Category>"
        "<Group Comment='g'><Integer Name='A'><Value>1</Value></Integer></Group>",
        "<Group Comment='g'><Category Name='Root'><pFeature>A</pFeature><pFeature>B</pFeature></Category>"
        "<Integer Name='B'><pValue>A</pValue></Integer></Group>");
    EXPECT_EQ(both->NodeCount(), 3u);
    EXPECT_THAT(Features(*both, "Root"), ElementsAre("A", "B"));
    EXPECT_EQ(TextOf(*both, "Root", Prop::ToolTip), "base");
    EXPECT_TRUE(both->Node(both->FindNode("B")).isFeature);
}

TEST(Injection, PriorityDecidesWhoseElementsStay)
{
    const auto node = [](int priority, const std::string& elements) {
        return "<Integer Name='A' MergePriority='" + std::to_string(priority) + "'>" + elements +
               "</Integer>";
    };
    const std::string base =
        "<ToolTip>base</ToolTip><DisplayName>base</DisplayName><pValue>B</pValue><Max>10</Max>";
    const std::string injected = "<ToolTip>new</ToolTip><Value>5</Value><Min>1</Min><Max>20</Max>";
    const std::string rest = "<Integer Name='B'><Value>1</Value></Integer>";
    for (const int priority : {0, 1}) {
        const auto both = Inject(node(0, base) + rest, node(priority, injected));
        EXPECT_EQ(TextOf(*both, "A", Prop::ToolTip), "new");
        EXPECT_EQ(TextOf(*both, "A", Prop::DisplayName), "base");
        EXPECT_EQ(TextOf(*both, "A", Prop::Value), "5");
        EXPECT_EQ(TextOf(*both, "A", Prop::pValue), "(none)") << "a value excludes the other kind of value";
        EXPECT_EQ(TextOf(*both, "A", Prop::Max), "20");
    }
    const auto both = Inject(node(0, base) + rest, node(-1, injected));
    EXPECT_EQ(TextOf(*both, "A", Prop::ToolTip), "base");
    EXPECT_EQ(TextOf(*both, "A", Prop::pValue), "B");
    EXPECT_EQ(TextOf(*both, "A", Prop::Value), "(none)");
    EXPECT_EQ(TextOf(*both, "A", Prop::Min), "1");
    EXPECT_EQ(TextOf(*both, "A", Prop::Max), "10");
}

TEST(Injection, ReplacesNodesOfOtherKindsAndWholeAddresses)
{
    const auto both =
        Inject(kPort + IntReg("R", "0x10") + "<Integer Name='A'><Value>1</Value></Integer>",
               "<IntReg Name='R'><Address>0x20</Address></IntReg><Float Name='A'><Value>1.5</Value></Float>");
    EXPECT_EQ(both->Node(both->FindNode("A")).type, NodeType::Float);
    EXPECT_EQ(TextOf(*both, "R", Prop::Address), "0x20");
    size_t addresses = 0;
    for (const Property& property : both->Properties(both->FindNode("R")))
        addresses += property.id == Prop::Address;
    EXPECT_EQ(addresses, 1u);
}

TEST(Injection, EntriesOfOneNameAreTheWinners)
{
    const auto both =
        Inject("<Enumeration Name='E'><EnumEntry Name='A'><Value>1</Value></EnumEntry><EnumEntry "
               "Name='B'><Value>2</Value></EnumEntry><Value>1</Value></Enumeration>",
               "<Enumeration Name='E'><EnumEntry Name='B'><Value>20</Value></EnumEntry><EnumEntry "
               "Name='C'><Value>3</Value></EnumEntry></Enumeration>");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_A", Prop::Value), "1");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_B", Prop::Value), "20");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_C", Prop::Value), "3");
    EXPECT_EQ(TextOf(*both, "E", Prop::Value), "1");
}

TEST(Injection, WorksOnEntriesOfStructuresOneByOne)
{
    const auto structure = [](const std::string& address, const std::string& priority,
                              const std::string& entries) {
        return "<StructReg Comment='S' MergePriority='" + priority + "'><Address>" + address +
               "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
               "<Endianess>LittleEndian</Endianess>" +
               entries + "</StructReg>";
    };
    const auto entry = [](const std::string& name) {
        return "<StructEntry Name='" + name + "'><Bit>1</Bit></StructEntry>";
    };
    const std::string base = kPort + structure("1", "0", entry("A") + entry("B")) + IntReg("C", "1");
    const auto addresses = [](const Description& description) {
        std::string list;
        for (const char* name : {"A", "B", "C"})
            list += TextOf(description, name, Prop::Address);
        return list;
    };
    EXPECT_EQ(addresses(*Inject(base, structure("2", "0", entry("A") + entry("C")))), "212");
    EXPECT_EQ(addresses(*Inject(base, structure("2", "0", entry("A") + entry("B")))), "221");
    EXPECT_EQ(addresses(*Inject(base, structure("2", "-1", entry("A") + entry("C")))), "111");
    EXPECT_EQ(addresses(*Inject(base, IntReg("A", "2"))), "211");
}

TEST(Injection, ErrorsNameTheNode)
{
    EXPECT_EQ(ErrorOf([] { Inject("", "<Integer Name='I'><pValue>Foo</pValue></Integer>"); }),
              "Runtime: node 'I': element 'pValue' names 'Foo', which does not exist");
    EXPECT_THAT(ErrorOf([] { Inject("<Node Name='I'/>", "<Node Name='I'/><Node Name='I'/>"); }),
                HasSubstr("node 'I': is defined a second time"));
    EXPECT_THAT(ErrorOf([] { ReadDescription(Doc(""), "<x/>"); }),
                HasSubstr("RegisterDescription is expected"));
}

} // namespace
} // namespace KxGenApi
