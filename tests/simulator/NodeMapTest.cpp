// SPDX-License-Identifier: Apache-2.0
#include "SimulatorFixture.h"

namespace
{

using namespace KxTest;
using namespace KxApi;
using testing::Not;

class EachCamera : public Simulator, public testing::WithParamInterface<Place>
{
protected:
    /// All nodes that can be read are; the number of the features among them.
    static size_t ReadAll(GenApi::INodeMap& map)
    {
        size_t features = 0;
        GenApi::NodeList_t nodes;
        map.GetNodes(nodes);
        for (GenApi::INode* const node : nodes) {
            const GenApi::CValuePtr value(node);
            if (!value.IsValid() || !GenApi::IsReadable(node))
                continue;
            EXPECT_NO_THROW(value->ToString()) << node->GetName();
            features += node->IsFeature() ? 1U : 0U;
        }
        return features;
    }
};

INSTANTIATE_TEST_SUITE_P(Cameras, EachCamera,
                         testing::Values(kMono, kBayer, kAllKinds, kColour, kPolarized, kPolarizedBayer,
                                         kPlanar, kRange, kRegions),
                         [](const auto& camera) {
                             std::string name = camera.param.camera;
                             name.erase(name.find('-'), 1);
                             return name;
                         });

TEST_P(EachCamera, HasMapsWhoseNodesAllRead)
{
    const DevicePtr device = Open(GetParam());
    const StreamPtr stream(device->OpenIKxStream(0));
    EXPECT_GT(ReadAll(*System().GetIKxPort()->GetINodeMap()), 10U);
    EXPECT_GT(ReadAll(*Interface(GetParam().interface).GetIKxPort()->GetINodeMap()), 10U);
    EXPECT_GT(ReadAll(*device->GetIKxLocalPort()->GetINodeMap()), 10U);
    EXPECT_GT(ReadAll(*stream->GetIKxPort()->GetINodeMap()), 10U);
    EXPECT_GT(ReadAll(Features(device)), 60U);
}

TEST_P(EachCamera, TakesBackTheValueOfEveryFeature)
{
    const DevicePtr device = Open(GetParam());
    GenApi::NodeList_t nodes;
    Features(device).GetNodes(nodes);
    size_t written = 0;
    for (GenApi::INode* const node : nodes) {
        const GenApi::CValuePtr value(node);
        const GenApi::CFloatPtr real(node);
        if (!node->IsFeature() || !value.IsValid() || node->GetAccessMode() != GenApi::RW ||
            node->GetPrincipalInterfaceType() == GenApi::intfICommand)
            continue;
        const std::string before = value->ToString().c_str();
        if (real.IsValid()) // its text has lost digits
            EXPECT_NO_THROW(real->SetValue(real->GetValue())) << node->GetName();
        else
            EXPECT_NO_THROW(value->FromString(before.c_str())) << node->GetName();
        EXPECT_EQ(value->ToString(), before.c_str()) << node->GetName();
        ++written;
    }
    EXPECT_GT(written, 30U);
    EXPECT_EQ(Get(device, "Width"), Get(device, "WidthMax")) << "nothing has moved";
}

class Maps : public Simulator
{};

TEST_F(Maps, KeepOneValueForEachPairOfSelectors)
{
    const DevicePtr device = Open(kAllKinds);
    for (const char* outer : {"Left", "Right"}) {
        Set(device, "KxOuterSelector", outer);
        for (int inner = 0; inner < 3; ++inner) {
            Set(device, "KxInnerSelector", std::to_string(inner));
            EXPECT_EQ(Get(device, "KxSelectedByBoth"), std::to_string((*outer == 'R' ? 10 : 0) + inner));
        }
    }
    Set(device, "KxOuterSelector", "Left");
    EXPECT_EQ(Get(device, "KxInnerSelector"), "2") << "the inner selector has a value for each outer one";
}

TEST_F(Maps, ShowFeaturesThatComeGoAndClearThemselves)
{
    const DevicePtr device = Open(kAllKinds);
    GenApi::INodeMap& map = Features(device);
    const auto access = [&](const char* name) { return map.GetNode(name)->GetAccessMode(); };
    Set(device, "KxAvailable", "0");
    EXPECT_EQ(access("KxSometimesAvailable"), GenApi::NA);
    Set(device, "KxLocked", "1");
    EXPECT_EQ(access("KxSometimesLocked"), GenApi::RO);
    EXPECT_EQ(access("KxNotImplemented"), GenApi::NI);
    EXPECT_EQ(access("KxWriteOnly"), GenApi::WO);

    Set(device, "KxSelfClearing", "Once");
    EXPECT_TRUE(Eventually([&] { return Get(device, "KxSelfClearing") == "Off"; }));
    Set(device, "KxSelfClearing", "Continuous");
    EXPECT_EQ(Get(device, "KxSelfClearing"), "Continuous");

    const GenApi::CCommandPtr slow(map.GetNode("KxSlowCommand"));
    slow->Execute();
    EXPECT_FALSE(slow->IsDone());
    EXPECT_TRUE(Eventually([&] { return slow->IsDone(); }));
    Execute(device, "KxCommand");
    Execute(device, "KxCommand");
    EXPECT_EQ(Get(device, "KxCommandCount"), "2");
}

TEST_F(Maps, LetTheCameraRefuseWhatIsOutOfItsLimits)
{
    const DevicePtr device = Open(kMono);
    const GenApi::CIntegerPtr width(Features(device).GetNode("Width"));
    const GenApi::CIntegerPtr offset(Features(device).GetNode("OffsetX"));
    EXPECT_THROW(width->SetValue(2449), GenICam::OutOfRangeException);
    // Past the map's own check, the camera has a say.
    EXPECT_EQ(ErrorOf([&] { width->SetValue(4096, false); }), GenTL::GC_ERR_INVALID_VALUE);
    EXPECT_EQ(ErrorOf([&] { width->SetValue(1001, false); }), GenTL::GC_ERR_INVALID_VALUE);
    EXPECT_EQ(width->GetValue(true, true), 2448) << "as it was";
    width->SetValue(1000);
    EXPECT_EQ(offset->GetMax(), 1448);
    offset->SetValue(1448);
    EXPECT_EQ(width->GetMax(), 1000);
    Set(device, "BinningHorizontal", "2");
    EXPECT_EQ(width->GetValue(), 1224) << "the whole sensor again";
    EXPECT_EQ(offset->GetValue(), 0);
}

TEST_F(Maps, OfADeviceOpenForReadingCannotBeWritten)
{
    const DevicePtr device = Open(kMono, KxDeviceAccess_ReadOnly);
    EXPECT_EQ(Get(device, "Width"), "2448");
    EXPECT_THROW(Set(device, "Width", "640"), GenICam::AccessException);
    EXPECT_EQ(ErrorOf([&] { device->OpenIKxStream(0); }), GenTL::GC_ERR_ACCESS_DENIED);
    EXPECT_EQ(Get(*device->GetIKxLocalPort()->GetINodeMap(), "DeviceAccessStatus"), "OpenReadOnly");
}

} // namespace
