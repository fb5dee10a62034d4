// SPDX-License-Identifier: Apache-2.0
// Nodes of every kind, representation, visibility and access mode, for programs that show node maps.

#include "AllKindsNodes.h"
#include "Camera.h"
#include "Features.h"

#include <cmath>

namespace KxSim
{
namespace
{

void DescribeNumbers(CFeatureList& list)
{
    list.Category("KxIntegers", "Integers in every representation");
    const auto integer = [](const char* name, const char* tip) { return Integer(name, tip).Custom(); };
    list.Add(integer("KxIntLinear", "A slider").Range("-100", "100", "5").Wide().As("Linear").Default(25));
    list.Add(integer("KxIntLogarithmic", "A slider with narrow and wide steps")
                 .Range("1", "1000000")
                 .As("Logarithmic")
                 .Default(1000));
    list.Add(integer("KxIntPureNumber", "A number without a slider").As("PureNumber").Default(42));
    list.Add(
        integer("KxIntHexNumber", "A hexadecimal number").Wide().As("HexNumber").Default(int64_t{0xC0FFEE}));
    list.Add(integer("KxIntBoolean", "An integer shown as a choice of two")
                 .Range("0", "1")
                 .As("Boolean")
                 .Default(1));
    list.Add(integer("KxIntIPV4Address", "An IP address").As("IPV4Address").Default(int64_t{0xC0A80A01}));
    list.Add(integer("KxIntMACAddress", "An address in a network")
                 .Wide()
                 .As("MACAddress")
                 .Default(int64_t{0x024B58000001}));
    list.Add(
        integer("KxIntWithUnit", "An integer with a unit").Unit("us").Range("0", "1000", "10").Default(500));
    list.Add(integer("KxIntFromLimits", "Its limits are the two features below")
                 .Wide()
                 .Range("KxIntLowest", "KxIntHighest")
                 .Default(5));
    list.Add(integer("KxIntLowest", "Lower limit").Wide());
    list.Add(integer("KxIntHighest", "Upper limit").Wide().Default(10));

    list.Category("KxFloats", "Numbers with a point in every representation");
    const auto real = [](const char* name, const char* tip) { return Float(name, tip).Custom(); };
    list.Add(real("KxFloatLinear", "A slider").Range("-1", "1").As("Linear").Default(0.25));
    list.Add(real("KxFloatLogarithmic", "A slider with narrow and wide steps")
                 .Range("0.001", "1000")
                 .As("Logarithmic")
                 .Unit("Hz")
                 .Default(1.0));
    list.Add(
        real("KxFloatPureNumber", "A number without a slider").As("PureNumber").Default(3.14159265358979));
    list.Raw(kNotationNodes, {"KxFloatFixed", "KxFloatScientific", "KxFloatSteps", "KxIntChoice"});
    list.Add(real("KxFloatStored", "Value behind the two above").Invisible().Default(12345.678));
    list.Add(integer("KxIntStored", "Value behind the choice above").Invisible().Default(4));
}

void DescribeAccess(CFeatureList& list)
{
    list.Category("KxAccess", "Access modes and visibilities");
    list.Add(Integer("KxReadWrite", "Can be read and written").Custom().Default(1));
    list.Add(Integer("KxReadOnly", "Can be read").Custom().ReadOnly().Default(2));
    list.Add(Integer("KxWriteOnly", "Can be written").Custom().WriteOnly());
    list.Add(Boolean("KxAvailable", "Whether the next feature is available").Custom().Default(1));
    list.Add(Integer("KxSometimesAvailable", "Available while the one before says so")
                 .Custom()
                 .Default(3)
                 .AvailableIf("(KxAvailable = 1)"));
    list.Add(Boolean("KxLocked", "Whether the next feature is locked").Custom());
    list.Add(Integer("KxSometimesLocked", "Can't be written while the one before says so")
                 .Custom()
                 .Default(4)
                 .LockedIf("(KxLocked = 1)"));
    list.Raw(kAccessNodes, {"KxNotImplemented", "KxNotAvailable", "KxImposedReadOnly", "KxDeprecated"});
    list.Add(Integer("KxBeginner", "For everybody").Custom().Default(1));
    list.Add(Integer("KxExpert", "For experts").Custom().Expert().Default(2));
    list.Add(Integer("KxGuru", "For gurus").Custom().Guru().Default(3));
    list.Add(Integer("KxInvisible", "For programs").Custom().Invisible().Default(4));
}

void DescribeRest(CFeatureList& list)
{
    list.Category("KxChoices", "Choices, commands and texts");
    list.Add(Boolean("KxBoolean", "Yes or no").Custom().Default(1));
    list.Add(Enumeration("KxEnumeration", "One of several")
                 .Custom()
                 .Entries({{"Red", 1, "Like fire", true},
                           {"Green", 2, "Like grass", true},
                           {"Blue", 4, "Like the sky", true}})
                 .Default(2));
    list.Raw(kChoiceNodes, {"KxEntries", "KxSelfClearing"});
    list.Add(Integer("KxEntryStored", "Value behind KxEntries").Custom().Invisible());
    list.Add(Integer("KxSelfClearingStored", "Value behind KxSelfClearing").Custom().Invisible().Volatile());
    list.Add(Command("KxCommand", "Counts in KxCommandCount").Custom());
    list.Add(Integer("KxCommandCount", "How often KxCommand was executed")
                 .Custom()
                 .ReadOnly()
                 .ChangedBy({"KxCommand"}));
    list.Raw(kSlowCommandNodes, {"KxSlowCommand"});
    list.Add(Integer("KxSlowCommandStored", "Register of KxSlowCommand")
                 .Custom()
                 .Invisible()
                 .NotStored()
                 .Volatile());
    list.Add(String("KxString", "A text").Custom().Length(32).Default("text"));
    list.Add(
        String("KxStringReadOnly", "A text that can't be changed").Custom().ReadOnly().Default("read only"));
    list.Add(Integer("KxPolled", "Counts seconds, and wants to be asked again every 500 ms")
                 .Custom()
                 .ReadOnly()
                 .Volatile(500)
                 .Unit("s"));

    list.Category("KxSelectors", "Selectors, two levels deep");
    list.Add(Enumeration("KxOuterSelector", "Outer selector")
                 .Custom()
                 .Entries({{"Left", 0, "", true}, {"Right", 1, "", true}}));
    list.Add(Integer("KxInnerSelector", "Inner selector")
                 .Custom()
                 .Range("0", "2")
                 .SelectedBy({"KxOuterSelector"}));
    list.Add(Integer("KxSelectedByOuter", "One value for each of the outer")
                 .Custom()
                 .SelectedBy({"KxOuterSelector"}));
    list.Add(Integer("KxSelectedByBoth", "One value for each pair")
                 .Custom()
                 .SelectedBy({"KxOuterSelector", "KxInnerSelector"}));
    list.Add(Float("KxFloatSelectedByBoth", "One value for each pair")
                 .Custom()
                 .SelectedBy({"KxOuterSelector", "KxInnerSelector"}));
}

void DescribeAllKinds(const CCameraModel&, CFeatureList& list)
{
    DescribeNumbers(list);
    DescribeAccess(list);
    DescribeRest(list);
    list.Category("KxRegisters", "Registers, bits and formulas, as nodes of their own");
    list.Raw(kRegisterNodes,
             {"KxIntegerRegister", "KxSignedRegister", "KxMaskedField", "KxSingleBit", "KxStructLow",
              "KxStructHigh", "KxFloatRegister", "KxStringRegister", "KxRegister"});
    list.Raw(kFormulaNodes, {"KxIntSwissKnife", "KxSwissKnife", "KxIntConverter", "KxConverter",
                             "KxBothCopies", "KxValueByIndex"});
    list.Add(Integer("KxWord", "Register of the bits").Custom().Invisible().Default(int64_t{0x12345678}));
    list.Add(Integer("KxSignedWord", "Register of KxSignedRegister").Custom().Invisible().Wide().Default(-5));
    list.Add(Float("KxReal", "Register of KxFloatRegister").Custom().Invisible().Default(0.5));
    list.Add(
        String("KxText", "Register of KxStringRegister").Custom().Invisible().Length(16).Default("register"));
    list.Add(String("KxBytes", "Register of KxRegister").Custom().Invisible().Length(16));
    list.Add(Integer("KxCopy", "Second copy of KxBothCopies").Custom().Invisible().Wide());
    list.Category("KxNested", "A category with another one in it");
    list.Raw(kNestedCategory, {"KxNestedDeeper"});
}

void BindAllKinds(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("KxCommandReg").afterWrite = [&](size_t) {
        map.SetInteger("KxCommandReg", 0);
        map.SetInteger("KxCommandCountReg", map.GetInteger("KxCommandCountReg") + 1);
    };
    // Reads clear it: the first one after the writing still finds it at work.
    map.At("KxSelfClearingStoredReg").beforeRead = [&, reads = 0](size_t) mutable {
        if (map.GetInteger("KxSelfClearingStoredReg") != 1)
            reads = 0;
        else if (++reads > 1)
            map.SetInteger("KxSelfClearingStoredReg", 0);
    };
    map.At("KxSlowCommandStoredReg").beforeRead = [&, reads = 0](size_t) mutable {
        constexpr int kBusyReads = 3;
        if (map.GetInteger("KxSlowCommandStoredReg") != 1)
            reads = 0;
        else if (++reads > kBusyReads)
            map.SetInteger("KxSlowCommandStoredReg", 0);
    };
    map.At("KxPolledReg").beforeRead = [&](size_t) {
        map.SetInteger("KxPolledReg", static_cast<int64_t>(camera.Timestamp() / 1000000000));
    };
    for (size_t i = 0; i < map.At("KxSelectedByBothReg").count; ++i) {
        map.SetInteger("KxSelectedByBothReg", static_cast<int64_t>(10 * (i / 3) + i % 3), i);
        map.SetReal("KxFloatSelectedByBothReg", static_cast<double>(i) / 2, i);
    }
}

} // namespace

const CFeatureGroup kAllKindsFeatures = {DescribeAllKinds, BindAllKinds};

} // namespace KxSim
