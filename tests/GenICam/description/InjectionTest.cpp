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
    return ReadDescription(Doc(NodesAsXml(base)), Doc(NodesAsXml(injected)));
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
    const auto both = ReadDescription(
        Doc("<Category Name='Root'><ToolTip>base</ToolTip><pFeature>A</pFeature></Category>"
            "<Group Comment='g'><Integer Name='A'><Value>1</Value></Integer></Group>"),
        Doc("<Group Comment='g'><Category Name='Root'><pFeature>A</pFeature><pFeature>B</pFeature></Category>"
            "<Integer Name='B'><pValue>A</pValue></Integer></Group>"));
    EXPECT_EQ(both->NodeCount(), 3u);
    EXPECT_THAT(Features(*both, "Root"), ElementsAre("A", "B"));
    EXPECT_EQ(TextOf(*both, "Root", Prop::ToolTip), "base");
    EXPECT_TRUE(both->Node(both->FindNode("B")).isFeature);
}

TEST(Injection, PriorityDecidesWhoseElementsStay)
{
    const auto node = [](int priority, const std::string& elements) {
        return "Integer A[MergePriority=" + std::to_string(priority) + "] { " + elements + " }";
    };
    const std::string base = "ToolTip base; DisplayName base; pValue B; Max 10";
    const std::string injected = "ToolTip new; Value 5; Min 1; Max 20", rest = "Integer B { Value 1 }";
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
    const auto both = Inject("Port Device { } IntReg R { at 0x10 4 RW; Little } Integer A { Value 1 }",
                             "IntReg R { Address 0x20 } Float A { Value 1.5 }");
    EXPECT_EQ(both->Node(both->FindNode("A")).type, NodeType::Float);
    EXPECT_EQ(TextOf(*both, "R", Prop::Address), "0x20");
    size_t addresses = 0;
    for (const Property& property : both->Properties(both->FindNode("R")))
        addresses += property.id == Prop::Address;
    EXPECT_EQ(addresses, 1u);
}

TEST(Injection, EntriesOfOneNameAreTheWinners)
{
    const auto both = Inject("Enumeration E { EnumEntry A { Value 1 } EnumEntry B { Value 2 } Value 1 }",
                             "Enumeration E { EnumEntry B { Value 20 } EnumEntry C { Value 3 } }");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_A", Prop::Value), "1");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_B", Prop::Value), "20");
    EXPECT_EQ(TextOf(*both, "EnumEntry_E_C", Prop::Value), "3");
    EXPECT_EQ(TextOf(*both, "E", Prop::Value), "1");
}

TEST(Injection, WorksOnEntriesOfStructuresOneByOne)
{
    const auto structure = [](const std::string& address, const std::string& priority,
                              const std::string& names) {
        std::string text = "StructReg S[MergePriority=" + priority + "] { at " + address + " 4 RW; Little; ";
        for (const char name : names)
            text += std::string("StructEntry ") + name + " { Bit 1 } ";
        return text + "}";
    };
    const std::string base =
        "Port Device { } " + structure("1", "0", "AB") + "IntReg C { at 1 4 RW; Little }";
    const auto addresses = [](const Description& description) {
        std::string list;
        for (const char* name : {"A", "B", "C"})
            list += TextOf(description, name, Prop::Address);
        return list;
    };
    EXPECT_EQ(addresses(*Inject(base, structure("2", "0", "AC"))), "212");
    EXPECT_EQ(addresses(*Inject(base, structure("2", "0", "AB"))), "221");
    EXPECT_EQ(addresses(*Inject(base, structure("2", "-1", "AC"))), "111");
    EXPECT_EQ(addresses(*Inject(base, "IntReg A { at 2 4 RW; Little }")), "211");
}

TEST(Injection, ErrorsNameTheNode)
{
    EXPECT_EQ(ErrorOf([] { Inject("", "Integer I { pValue Foo }"); }),
              "Runtime: node 'I': element 'pValue' names 'Foo', which does not exist");
    EXPECT_THAT(ErrorOf([] { Inject("Node I { }", "Node I { } Node I { }"); }),
                HasSubstr("node 'I': is defined a second time"));
    EXPECT_THAT(ErrorOf([] { ReadDescription(Doc(""), "<x/>"); }),
                HasSubstr("RegisterDescription is expected"));
}

} // namespace
} // namespace KxGenApi
