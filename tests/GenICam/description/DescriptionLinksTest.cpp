// SPDX-License-Identifier: Apache-2.0
// What references resolve to and what follows from them.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNodes = R"(
    Category Root { pFeature Cat; pFeature Sel } Category Cat { pFeature Width }
    Category Apart { pFeature Lone } Integer Lone { Value 1 }
    Integer Width {
        pIsImplemented Flag; pIsAvailable Flag; pIsLocked Lock; pBlockPolling Block; pError Err; pAlias Alias;
        pValueCopy Copy; pValue Reg; pMin Lim; pMax Lim; pInc Inc }
    IntReg Reg { pAddress Addr; pIndex[pOffset=Stride] Sel; pLength Len; AccessMode RW; pPort Device;
        pInvalidator Cmd; Big }
    Enumeration Sel { EnumEntry E { Value 0 } Value 0; pSelected Width; pSelected Sub }
    Integer Sub { Value 0; pSelected Width }
    Command Cmd { pValue Reg2; pCommandValue CmdVal } IntReg Reg2 { at 0 4 WO; Big }
    Integer Flag { Value 1 } Integer Lock { Value 0 } Integer Block { Value 0 } Integer Err { Value 0 }
    Integer Alias { Value 0 } Integer Copy { Value 0 } Integer Lim { Value 0 } Integer Inc { Value 1 }
    Integer Addr { Value 0 } Integer Stride { Value 0 } Integer Len { Value 4 } Integer CmdVal { Value 1 }
    Port Device { })";

TEST(DescriptionLinks, DependentsAreWhatChangesWithANode)
{
    const auto description = ReadOutline(kNodes);
    const std::pair<const char*, std::vector<std::string>> expected[] = {
        {"Flag", {"Width"}},
        {"Lock", {"Width"}},
        {"Lim", {"Width"}},
        {"Inc", {"Width"}},
        {"Reg", {"Width"}},
        {"Width", {"Cat"}},
        {"Addr", {"Reg"}},
        {"Stride", {"Reg"}},
        {"Len", {"Reg"}},
        {"Device", {"Reg", "Reg2"}},
        {"Cmd", {"Reg"}},
        {"Reg2", {"Cmd"}},
        {"CmdVal", {"Cmd"}},
        {"EnumEntry_Sel_E", {"Sel"}},
        {"Sel", {"Reg", "Root", "Sub", "Width"}},
        {"Sub", {"Width"}},
        {"Cat", {"Root"}},
        {"Root", {}},
        {"Block", {"Width"}},
        {"Err", {}},
        {"Alias", {}},
        {"Copy", {}},
    };
    for (const auto& [node, dependents] : expected)
        EXPECT_EQ(DependentNames(*description, node), dependents) << node;
}

TEST(DescriptionLinks, VariablesReadTheSideThatTheirNameTells)
{
    const auto partOf = [&](const std::string& name, const std::string& target) {
        const auto description =
            ReadOutline("Integer Width { Value 1 } "
                        "Enumeration Mode[NameSpace=Standard] { EnumEntry On { Value 1 } Value 1 } "
                        "IntSwissKnife S { pVariable[Name=" +
                        name + "] " + target + "; Formula 1 }");
        EXPECT_EQ(DependentNames(*description, target.substr(target.rfind(':') + 1)),
                  std::vector<std::string>{"S"});
        return description->Find(description->FindNode("S"), Prop::pVariable)->part;
    };
    for (const auto& [name, part] : {std::pair{"V", RefPart::Value},
                                     {"Max", RefPart::Value},
                                     {"V.Value", RefPart::Value},
                                     {"V.Min", RefPart::Min},
                                     {"V.Max", RefPart::Max},
                                     {"V.Inc", RefPart::Inc},
                                     {"V.AccessMode", RefPart::AccessMode},
                                     {"V.Entry.On", RefPart::Entry},
                                     {"V.Entry", RefPart::Unknown},
                                     {"V.min", RefPart::Unknown},
                                     {"A.B.Max", RefPart::Unknown},
                                     {"V..Max", RefPart::Unknown}})
        EXPECT_EQ(partOf(name, "Width"), part) << name;
    EXPECT_EQ(partOf("V.Min", "Cust::Width"), RefPart::Min);
    EXPECT_EQ(partOf("V.Entry.On", "Std::Mode"), RefPart::Entry);
    EXPECT_THROW(partOf("V", "Width.Max"), GenICam::RuntimeException) << "a suffix of the text names no node";
}

// Width's limit needs OffsetX, whose limit needs Width.
TEST(DescriptionLinks, LimitsAndInvalidatorsMayGoInCircles)
{
    EXPECT_EQ(ErrorOf([] {
                  ReadOutline(R"(Port Device { }
        Integer Width { pValue WidthReg; pMax WidthMax }
        Integer OffsetX { pIsLocked Width; pValue OffsetReg; pMax OffsetMax }
        IntSwissKnife WidthMax { pVariable[Name=O] OffsetX; Formula 99-O }
        IntSwissKnife OffsetMax { pVariable[Name=W] Width; pVariable[Name=M.Min] OffsetX; Formula 99-W }
        Integer Sel { pValue OffsetReg; pSelected Sel } IntReg WidthReg { at 16 4 RW; Little }
        IntReg OffsetReg { at 0 4 RW; pInvalidator OffsetReg; pInvalidator OffsetX; Big })");
              }),
              "nothing");
}

TEST(DescriptionLinks, ValuesThatDependOnThemselvesAreErrorsThatNameTheChain)
{
    for (const auto& [nodes, chain] : {
             std::pair{"Integer A { pValue A }", "A -> A"},
             {"Integer A { pValue B } Float B { pValue C } IntSwissKnife C { pVariable[Name=V] A; Formula V "
              "}",
              "A -> B -> C -> A"},
             {"IntReg R { pAddress A; at 0 4 RO; Big } Integer A { pValue R }", "R -> A -> R"},
             {"IntReg R { pIndex[pOffset=R] I; at 0 4 RO; Big } Integer I { Value 1 }", "R -> R"},
             {"StringReg R { Address 0; pLength L; AccessMode RO; pPort Device }"
              "Integer L { pIndex L; ValueIndexed[Index=0] 1; ValueDefault 1 }",
              "L -> L"},
             {"SwissKnife S { Expression[Name=A] B+1; Expression[Name=B] A+1; Formula A }",
              "_S_A -> _S_B -> _S_A"},
             {"Category A { pFeature B } Category B { pFeature A }", "A -> B -> A"},
             {"Integer A { pValueCopy A; pValue B } Integer B { Value 1 }", "A -> A"},
         })
        EXPECT_THAT(ErrorOfNodes(NodesAsXml("Port Device { } " + std::string(nodes))),
                    testing::AllOf(testing::StartsWith("Runtime: line "),
                                   testing::HasSubstr("its value depends on itself: " + std::string(chain))));
}

} // namespace
} // namespace KxGenApi
