// SPDX-License-Identifier: Apache-2.0
// What a camera of several images sends.

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

struct CComponentRow
{
    const char *name, *toolTip;
    EComponent component;
};
constexpr CComponentRow kComponentRows[] = {
    {"Range", "Distance from the camera", EComponent::Range},
    {"Intensity", "Brightness", EComponent::Intensity},
    {"Confidence", "How far the range can be trusted", EComponent::Confidence}};

void DescribeComponent(const CCameraModel& model, CFeatureList& list)
{
    if (model.parts != EParts::Range)
        return;
    list.Category("ComponentControl", "Images that come in one buffer");
    std::vector<CEntry> entries;
    for (const CComponentRow& row : kComponentRows)
        entries.push_back({row.name, static_cast<int64_t>(entries.size()), row.toolTip});
    list.Add(Enumeration("ComponentSelector", "Which image the features below are about").Entries(entries));
    list.Add(Boolean("ComponentEnable", "Whether it is sent")
                 .Default(1)
                 .SelectedBy({"ComponentSelector"})
                 .LockedIf("(TLParamsLocked = 1)"));
    list.Add(Integer("ComponentIDValue", "Its number in the buffers")
                 .ReadOnly()
                 .Expert()
                 .SelectedBy({"ComponentSelector"}));
    list.Category("Scan3dControl", "What the values of the range are");
    list.Add(Enumeration("Scan3dDistanceUnit", "Unit of distances")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"Millimeter", 0, ""}}));
    list.Add(Enumeration("Scan3dOutputMode", "Which coordinates are sent")
                 .ReadOnly()
                 .Expert()
                 .Entries({{"CalibratedC", 0, "Distances"}}));
    list.Add(Float("Scan3dCoordinateScale", "Millimetres of one step").ReadOnly().Expert().Default(0.01));
    list.Add(Float("Scan3dCoordinateOffset", "Millimetres of the value 0").ReadOnly().Expert());
    list.Add(Boolean("Scan3dInvalidDataFlag", "Whether a value stands for no data")
                 .ReadOnly()
                 .Expert()
                 .Default(1));
    list.Add(Float("Scan3dInvalidDataValue", "That value").ReadOnly().Expert());
}

void BindComponent(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    if (!map.Has("ComponentEnableReg"))
        return;
    size_t index = 0;
    for (const CComponentRow& row : kComponentRows)
        map.SetInteger("ComponentIDValueReg", static_cast<int64_t>(row.component), index++);
    map.At("ComponentEnableReg").beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
    map.At("ComponentEnableReg").afterWrite = [&](size_t) {
        if (camera.EnabledComponents() == 0)
            Fail(GenTL::GC_ERR_INVALID_VALUE, "Camera '%s' has to send one of its images",
                 camera.Id().c_str());
    };
}

} // namespace

const CFeatureGroup kComponentFeatures = {DescribeComponent, BindComponent};

uint32_t CCamera::EnabledComponents()
{
    CRegisterMap& map = Registers();
    uint32_t enabled = 0;
    size_t index = 0;
    for (const CComponentRow& row : kComponentRows) {
        if (map.Has("ComponentEnableReg") && map.GetFlag("ComponentEnableReg", index))
            enabled |= 1U << static_cast<unsigned>(row.component);
        ++index;
    }
    return enabled;
}

} // namespace KxSim
