// SPDX-License-Identifier: Apache-2.0
// After an invalidation a register shows what the device holds, whoever else read the same bytes before:
// walked over every register and every node that invalidates it, in the patterns below and, where the
// environment variable KXAPI_CAMERA_XML names a folder, in all descriptions there.
#include "TestMap.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <utility>

using namespace GenApi;
using namespace KxTest;

namespace
{

/// A device whose every byte is another one in each epoch.
class ChangingPort : public IPort
{
public:
    uint64_t epoch = 0;

    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* pBuffer, int64_t address, int64_t length) override
    {
        for (int64_t i = 0; i < length; ++i)
            static_cast<uint8_t*>(pBuffer)[i] = At(static_cast<uint64_t>(address) + static_cast<uint64_t>(i));
    }
    void Write(const void*, int64_t, int64_t) override {}

private:
    uint8_t At(uint64_t address) const
    {
        uint64_t z = (address << 20) + epoch + 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        return static_cast<uint8_t>(z ^ (z >> 31));
    }
};

/// The registers of a map that are cached and readable over the port as it is, by their place.
class Walk
{
public:
    explicit Walk(CNodeMapRef& map)
        : m_map(map)
    {
        NodeList_t nodes;
        map._GetNodes(nodes);
        for (INode* const pNode : nodes) {
            auto* const pPort = dynamic_cast<IPort*>(pNode);
            if (pPort != nullptr)
                map._Connect(&m_port, pNode->GetName());
        }
    }

    /// Pairs of a register and what invalidates it after which the register is not what the device holds.
    std::vector<std::string> StalePairs(int& pairs)
    {
        std::vector<std::string> stale;
        NodeList_t nodes;
        m_map._GetNodes(nodes);
        std::map<std::pair<int64_t, int64_t>, std::vector<IRegister*>> places;
        for (INode* const pNode : nodes) {
            auto* const pRegister = dynamic_cast<IRegister*>(pNode);
            if (pRegister != nullptr && KindRaisedBy([&] { Bytes(*pRegister); }) == "none")
                places[{pRegister->GetAddress(), pRegister->GetLength()}].push_back(pRegister);
        }
        for (const auto& place : places)
            for (IRegister* const pRegister : place.second)
                for (INode* const pInvalidator : InvalidatorsOf(*pRegister)) {
                    for (IRegister* const pSibling : place.second) // one of them fills the shared bytes
                        RaisedBy([&] { Bytes(*pSibling); });
                    ++m_port.epoch;
                    pInvalidator->InvalidateNode();
                    ++pairs;
                    if (IsStale(*pRegister))
                        stale.push_back(std::string(pInvalidator->GetName()) + " -> " +
                                        pRegister->GetNode()->GetName().c_str());
                }
        return stale;
    }

private:
    static std::vector<uint8_t> Bytes(IRegister& node)
    {
        std::vector<uint8_t> bytes(static_cast<size_t>(node.GetLength()));
        node.Get(bytes.data(), static_cast<int64_t>(bytes.size()));
        return bytes;
    }

    bool IsStale(IRegister& node)
    {
        std::vector<uint8_t> bytes, held;
        const bool isReadable = KindRaisedBy([&] {
                                    bytes = Bytes(node);
                                    held.resize(bytes.size());
                                    const int64_t length = static_cast<int64_t>(held.size());
                                    m_port.Read(held.data(), node.GetAddress(), length);
                                }) == "none";
        return isReadable && bytes != held; // the change may have made it unavailable
    }

    static NodeList_t InvalidatorsOf(IRegister& node)
    {
        NodeList_t invalidators;
        node.GetNode()->GetChildren(invalidators, ctInvalidatingChildren);
        invalidators.push_back(node.GetNode());
        return invalidators;
    }

    CNodeMapRef& m_map;
    ChangingPort m_port;
};

void ExpectNoStalePairs(CNodeMapRef& map, const std::string& what)
{
    int pairs = 0;
    const std::vector<std::string> stale = Walk(map).StalePairs(pairs);
    EXPECT_TRUE(stale.empty()) << what << ": " << stale.size() << " of " << pairs << " pairs, first "
                               << stale.front();
    EXPECT_GT(pairs, 0) << what;
}

} // namespace

TEST(Invalidation, LeavesNoRegisterWithOldBytes)
{
    CNodeMapRef patterns;
    patterns._LoadXMLFromString(DescriptionAsXml(R"(
        IntReg Plain { at 0x10 4 RW; Little }
        MaskedIntReg Low { at 0x10 4 RW; LSB 0; MSB 7; Little }
        MaskedIntReg High { at 0x10 4 RW; pInvalidator Trigger; pInvalidator Reload; LSB 8; MSB 31; Little }
        Register Whole { at 0x10 4 RW; pInvalidator Reload }
        FloatReg Real { at 0x10 4 RW; pInvalidator Trigger; Little }
        StringReg Text { Address 0x30; pLength Size; AccessMode RW; pPort Device; pInvalidator Reload }
        Register SameText { at 0x30 16 RW; pInvalidator Trigger }
        Integer Size { Value 16 }
        StructReg S { at 0x20 4 RW; pInvalidator Reload; Little;
            StructEntry First { Bit 3 } StructEntry Second { pInvalidator Trigger; Bit 4 } }
        IntReg Indexed { pIndex Size; Length 4; AccessMode RW; pPort Device; pInvalidator Trigger; Little }
        IntReg AtIndex { at 0x40 4 RW; pInvalidator Reload; Little }
        IntReg Trigger { at 0 4 RW; Little }
        Command Reload { pValue Trigger; CommandValue 1 })")
                                    .c_str());
    ExpectNoStalePairs(patterns, "patterns");

    if (const char* const pFolder = std::getenv("KXAPI_CAMERA_XML"))
        for (const auto& entry : std::filesystem::directory_iterator(pFolder)) {
            CNodeMapRef map;
            if (entry.path().extension() != ".xml")
                continue;
            map._LoadXMLFromFile(entry.path().c_str());
            ExpectNoStalePairs(map, entry.path().filename());
        }
}

// Node objects are made when they are first asked for; one made after its invalidation knows of it as well.
TEST(Invalidation, ReachesRegistersThatNobodyHasReadYet)
{
    TestMap test(R"(
        IntReg First { at 0x10 4 RW; Little }
        IntReg Late { at 0x10 4 RW; pInvalidator Trigger; Little }
        IntReg Polled { at 0x10 4 RW; PollingTime 100; Little }
        IntReg Trigger { at 0 4 RW; Little })");
    test.port.Put(0x10, {1});
    EXPECT_EQ(test.Int("First").GetValue(), 1);
    test.port.Put(0x10, {2});
    test.Int("Trigger").SetValue(1);
    EXPECT_EQ(test.Int("Late").GetValue(), 2);
    test.port.Put(0x10, {3});
    test.map._Poll(100);
    EXPECT_EQ(test.Int("Polled").GetValue(), 3);
    EXPECT_EQ(test.Int("First").GetValue(), 1) << "it follows nothing";
}

TEST(Invalidation, DropsSharedBytesWhoeverReadThem)
{
    TestMap test(R"(
        Register Reader { at 0x10 4 RW }
        IntReg Sibling { at 0x10 4 RW; pInvalidator Trigger; Little }
        IntReg Trigger { at 0 4 RW; Little })");
    std::vector<uint8_t> bytes(4);
    uint8_t content = 0;
    for (const char* const name : {"Trigger", "Sibling", "Sibling"}) { // which is no object at first
        test.Reg("Reader").Get(bytes.data(), 4);
        test.port.Put(0x10, {++content});
        test.Get(name).InvalidateNode();
        test.Reg("Reader").Get(bytes.data(), 4);
        EXPECT_EQ(bytes[0], content) << name;
    }
}

TEST(Invalidation, ReachesWhatTheSameCallWroteBefore)
{
    TestMap test(R"(
        Integer X { pValue First; pValueCopy Second }
        IntReg First { at 0 4 RW; pInvalidator Second; Little } IntReg Second { at 4 4 RW; Little })");
    int writes = 0;
    test.port.onWrite = [&] {
        if (++writes == 2)
            test.port.Put(0, {9});
    };
    test.Int("X").SetValue(5);
    EXPECT_EQ(test.Int("First").GetValue(), 9);
    EXPECT_EQ(test.Int("Second").GetValue(), 5);
}
