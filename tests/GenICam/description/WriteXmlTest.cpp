// SPDX-License-Identifier: Apache-2.0
// What is written says the same as what was read.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

namespace KxGenApi
{
namespace
{

TEST(WriteXml, SaysTheSameInTheSameOrder)
{
    const auto first = ReadNodes(R"(<String Name="T"><ToolTip>a &lt;b&gt; &amp; "c"
line &#13;&#9; end </ToolTip><Value> two  blanks </Value></String>)" +
                                 NodesAsXml(R"(
        Category Root[NameSpace=Standard] { pFeature Mode; pFeature X }
        Enumeration Mode { EnumEntry On[NameSpace=Standard] {
            pIsAvailable I; Value 1; NumericValue 2.5; IsSelfClearing Yes } pValue R; pSelected X }
        Converter X { pVariable[Name=V.Entry.On] Mode; Constant[Name=C] 1.5; Expression[Name=E] V*C;
            FormulaTo FROM<E; FormulaFrom TO; pValue F; Slope Increasing }
        Integer I { pIndex Mode; ValueIndexed[Index=1] 7; pValueIndexed[Index=2] R; ValueDefault 0 }
        IntReg R { IntSwissKnife Off { Constant[Name=K] 4; Formula K } Address 0x10; pIndex[Offset=0x20] J;
            pIndex[pOffset=J] J; Length 4; AccessMode RW; pPort Device; Big } Integer J { Value 1 }
        StructReg S { Visibility Expert; Address 0; IntSwissKnife SOff { Formula 8 } Length 4; AccessMode RW;
            pPort Device; PollingTime 100; pInvalidator R; Little;
            StructEntry A { ToolTip t; pInvalidator I; LSB 0; MSB 3; Sign Signed }
            StructEntry B { AccessMode RO; Bit 5; Representation Boolean } }
        FloatReg F { at 0 4 RW; Big } Command Z { Value 0; CommandValue 1 } TextDesc D { Key 0x81 }
        Port Device { ChunkID 9C40 })"));
    const std::string xml = WriteXml(*first);
    const auto second = ReadDescription(xml);
    EXPECT_EQ(Content(*second), Content(*first));
    EXPECT_EQ(WriteXml(*second), xml);
    EXPECT_EQ(second->Device().modelName, "M");
    EXPECT_EQ(second->Device().subMinor, 4);
    EXPECT_EQ(second->Device().versionGuid, "G");
}

TEST(WriteXml, KeepsTheOrderOfNodes)
{
    const auto first = ReadOutline(
        "Integer A { pValue C } Integer B { pValue D } Integer C { Value 1 } Integer D { Value 1 }");
    EXPECT_EQ(AllNames(*ReadDescription(WriteXml(*first))), AllNames(*first));
}

} // namespace
} // namespace KxGenApi
