// SPDX-License-Identifier: Apache-2.0
// Nodes of kinds that cameras seldom have, as their description has them. $(Name) is the address of a
// register, $PORT the port, $ORDER its byte order.
#pragma once

namespace KxSim
{

constexpr char kNotationNodes[] = R"(
<Float Name="KxFloatFixed" NameSpace="Custom"><ToolTip>Fixed notation with 2 digits</ToolTip><pValue>KxFloatStoredReg</pValue><Min>0</Min><Max>100000</Max><DisplayNotation>Fixed</DisplayNotation><DisplayPrecision>2</DisplayPrecision></Float>
<Float Name="KxFloatScientific" NameSpace="Custom"><ToolTip>Scientific notation with 4 digits</ToolTip><pValue>KxFloatStoredReg</pValue><Min>0</Min><Max>100000</Max><DisplayNotation>Scientific</DisplayNotation><DisplayPrecision>4</DisplayPrecision></Float>
<Float Name="KxFloatSteps" NameSpace="Custom"><ToolTip>Has an increment</ToolTip><Value>1.5</Value><Min>0</Min><Max>10</Max><Inc>0.5</Inc><Unit>mm</Unit></Float>
<Integer Name="KxIntChoice" NameSpace="Custom"><ToolTip>Only some values are good</ToolTip><pValue>KxIntStoredReg</pValue><Min>1</Min><Max>16</Max><ValidValueSet>1;2;4;8;16</ValidValueSet></Integer>
)";

constexpr char kAccessNodes[] = R"(
<Integer Name="KxNotImplemented" NameSpace="Custom"><ToolTip>Is not there</ToolTip><pIsImplemented>KxNever</pIsImplemented><Value>0</Value></Integer>
<Integer Name="KxNotAvailable" NameSpace="Custom"><ToolTip>Never available</ToolTip><pIsAvailable>KxNever</pIsAvailable><Value>0</Value></Integer>
<Integer Name="KxImposedReadOnly" NameSpace="Custom"><ToolTip>Its register could be written</ToolTip><ImposedAccessMode>RO</ImposedAccessMode><pValue>KxReadWriteReg</pValue></Integer>
<Integer Name="KxDeprecated" NameSpace="Custom"><ToolTip>Use KxReadWrite</ToolTip><Description>An old name, with another one that tells the same.</Description><DisplayName>Deprecated value</DisplayName><Visibility>Guru</Visibility><DocuURL>http://www.example.com/docs</DocuURL><IsDeprecated>Yes</IsDeprecated><pAlias>KxReadWrite</pAlias><pValue>KxReadWriteReg</pValue></Integer>
<Integer Name="KxNever"><Visibility>Invisible</Visibility><ImposedAccessMode>RO</ImposedAccessMode><Value>0</Value></Integer>
)";

constexpr char kChoiceNodes[] = R"(
<Enumeration Name="KxEntries" NameSpace="Custom"><ToolTip>Entries with names and numbers of their own, one not available, one not there</ToolTip><EnumEntry Name="First" NameSpace="Custom"><DisplayName>The first</DisplayName><Value>0</Value><NumericValue>0.5</NumericValue></EnumEntry><EnumEntry Name="Second" NameSpace="Custom"><Value>1</Value><NumericValue>1.5</NumericValue></EnumEntry><EnumEntry Name="Absent" NameSpace="Custom"><pIsAvailable>KxNever</pIsAvailable><Value>2</Value></EnumEntry><EnumEntry Name="Missing" NameSpace="Custom"><pIsImplemented>KxNever</pIsImplemented><Value>3</Value></EnumEntry><pValue>KxEntryStoredReg</pValue></Enumeration>
<Enumeration Name="KxSelfClearing" NameSpace="Custom"><ToolTip>Once goes back to Off by itself</ToolTip><EnumEntry Name="Off" NameSpace="Custom"><Value>0</Value></EnumEntry><EnumEntry Name="Once" NameSpace="Custom"><Value>1</Value><IsSelfClearing>Yes</IsSelfClearing></EnumEntry><EnumEntry Name="Continuous" NameSpace="Custom"><Value>2</Value></EnumEntry><pValue>KxSelfClearingStoredReg</pValue><PollingTime>500</PollingTime></Enumeration>
)";

constexpr char kSlowCommandNodes[] = R"(
<Command Name="KxSlowCommand" NameSpace="Custom"><ToolTip>Takes a few looks until it is done</ToolTip><pValue>KxSlowCommandStoredReg</pValue><CommandValue>1</CommandValue><PollingTime>200</PollingTime></Command>
)";

constexpr char kRegisterNodes[] = R"(
<IntReg Name="KxIntegerRegister" NameSpace="Custom"><ToolTip>A register</ToolTip><Streamable>Yes</Streamable><Address>$(KxWordReg)</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort><Sign>Unsigned</Sign><Endianess>$ORDER</Endianess><Representation>HexNumber</Representation></IntReg>
<IntReg Name="KxSignedRegister" NameSpace="Custom"><ToolTip>A register with sign</ToolTip><Address>$(KxSignedWordReg)</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort><Sign>Signed</Sign><Endianess>$ORDER</Endianess></IntReg>
<MaskedIntReg Name="KxMaskedField" NameSpace="Custom"><ToolTip>Bits 4 to 11</ToolTip><Address>$(KxWordReg)</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort><pInvalidator>KxIntegerRegister</pInvalidator><LSB>4</LSB><MSB>11</MSB><Sign>Unsigned</Sign><Endianess>$ORDER</Endianess></MaskedIntReg>
<MaskedIntReg Name="KxSingleBit" NameSpace="Custom"><ToolTip>Bit 0</ToolTip><Address>$(KxWordReg)</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort><pInvalidator>KxIntegerRegister</pInvalidator><Bit>0</Bit><Sign>Unsigned</Sign><Endianess>$ORDER</Endianess></MaskedIntReg>
<StructReg Comment="Both halves of the word"><Address>$(KxWordReg)</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>$PORT</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>$ORDER</Endianess><StructEntry Name="KxStructLow" NameSpace="Custom"><ToolTip>Lower half</ToolTip><LSB>0</LSB><MSB>15</MSB></StructEntry><StructEntry Name="KxStructHigh" NameSpace="Custom"><ToolTip>Upper half</ToolTip><LSB>16</LSB><MSB>31</MSB></StructEntry></StructReg>
<FloatReg Name="KxFloatRegister" NameSpace="Custom"><ToolTip>A register with a point</ToolTip><Address>$(KxRealReg)</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort><Endianess>$ORDER</Endianess><Unit>V</Unit></FloatReg>
<StringReg Name="KxStringRegister" NameSpace="Custom"><ToolTip>A register with a text</ToolTip><Address>$(KxTextReg)</Address><Length>16</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort></StringReg>
<Register Name="KxRegister" NameSpace="Custom"><ToolTip>Bytes</ToolTip><Address>$(KxBytesReg)</Address><Length>16</Length><AccessMode>RW</AccessMode><pPort>$PORT</pPort></Register>
)";

constexpr char kFormulaNodes[] = R"(
<IntSwissKnife Name="KxIntSwissKnife" NameSpace="Custom"><ToolTip>Twice KxReadWrite, or 0 beyond 1000</ToolTip><pVariable Name="VALUE">KxReadWriteReg</pVariable><Constant Name="LIMIT">1000</Constant><Formula>((VALUE &gt;= 0) &amp;&amp; (VALUE &lt; LIMIT)) ? (2 * VALUE) : 0</Formula></IntSwissKnife>
<SwissKnife Name="KxSwissKnife" NameSpace="Custom"><ToolTip>Root of KxIntLogarithmic</ToolTip><pVariable Name="VALUE">KxIntLogarithmicReg</pVariable><Expression Name="ROOT">SQRT(VALUE)</Expression><Formula>ROOT</Formula><DisplayNotation>Fixed</DisplayNotation><DisplayPrecision>3</DisplayPrecision></SwissKnife>
<IntConverter Name="KxIntConverter" NameSpace="Custom"><ToolTip>KxIntPureNumber in tens</ToolTip><FormulaTo>FROM * 10</FormulaTo><FormulaFrom>TO / 10</FormulaFrom><pValue>KxIntPureNumberReg</pValue><Slope>Increasing</Slope></IntConverter>
<Converter Name="KxConverter" NameSpace="Custom"><ToolTip>KxIntWithUnit in milliseconds</ToolTip><FormulaTo>FROM * 1000</FormulaTo><FormulaFrom>TO / 1000</FormulaFrom><pValue>KxIntWithUnit</pValue><Unit>ms</Unit><Slope>Increasing</Slope></Converter>
<Integer Name="KxBothCopies" NameSpace="Custom"><ToolTip>Written to two registers</ToolTip><pValue>KxSignedWordReg</pValue><pValueCopy>KxCopyReg</pValueCopy></Integer>
<Integer Name="KxValueByIndex" NameSpace="Custom"><ToolTip>By KxEntries: 100, 200, else 999</ToolTip><ImposedAccessMode>RO</ImposedAccessMode><pIndex>KxEntryStoredReg</pIndex><ValueIndexed Index="0">100</ValueIndexed><ValueIndexed Index="1">200</ValueIndexed><ValueDefault>999</ValueDefault></Integer>
)";

constexpr char kNestedCategory[] = R"(
<Category Name="KxNestedDeeper" NameSpace="Custom"><ToolTip>Third level</ToolTip><pFeature>KxNestedDeepest</pFeature></Category>
<Category Name="KxNestedDeepest" NameSpace="Custom"><ToolTip>Fourth level</ToolTip><pFeature>KxBoolean</pFeature><pFeature>KxSwissKnife</pFeature></Category>
)";

} // namespace KxSim
