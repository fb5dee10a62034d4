// SPDX-License-Identifier: Apache-2.0
// Settings kept under a name, as long as the producer is loaded.

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

constexpr int64_t kFactorySet = 0;

void DescribeUserSet(const CCameraModel&, CFeatureList& list)
{
    list.Category("UserSetControl", "Settings kept in the camera");
    list.Add(Enumeration("UserSetSelector", "Which settings")
                 .Entries({{"Default", kFactorySet, "As the camera comes from its maker"},
                           {"UserSet0", 1, "The first of the user's"},
                           {"UserSet1", 2, "The second of the user's"}})
                 .NotStored());
    list.Add(Command("UserSetLoad", "Takes over the selected settings"));
    list.Add(Command("UserSetSave", "Keeps the present settings").AvailableIf("(UserSetSelector > 0)"));
    list.Add(Enumeration("UserSetDefault", "Settings that the camera starts with")
                 .Expert()
                 .Entries({{"Default", kFactorySet, ""}, {"UserSet0", 1, ""}, {"UserSet1", 2, ""}})
                 .NotStored());
}

void BindUserSet(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    camera.SaveSettings(kFactorySet);
    map.At("UserSetLoadReg").beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
    map.At("UserSetLoadReg").afterWrite = [&](size_t) {
        map.SetInteger("UserSetLoadReg", 0);
        camera.LoadSettings(map.GetInteger("UserSetSelectorReg"));
    };
    map.At("UserSetSaveReg").afterWrite = [&](size_t) {
        map.SetInteger("UserSetSaveReg", 0);
        const int64_t set = map.GetInteger("UserSetSelectorReg");
        if (set == kFactorySet)
            Fail(GenTL::GC_ERR_ACCESS_DENIED, "User set 'Default' can't be changed");
        camera.SaveSettings(set);
    };
}

} // namespace

const CFeatureGroup kUserSetFeatures = {DescribeUserSet, BindUserSet};

void CCamera::SaveSettings(int64_t set)
{
    auto& kept = m_settings[set];
    for (const CRegister& entry : Registers().All()) {
        if (entry.isSetting)
            kept[entry.name] = entry.bytes;
    }
}

void CCamera::LoadSettings(int64_t set)
{
    const auto place = m_settings.find(set);
    if (place == m_settings.end())
        Fail(GenTL::GC_ERR_NOT_AVAILABLE, "Nothing has been saved in user set %lld",
             static_cast<long long>(set));
    for (const auto& [name, bytes] : place->second)
        Registers().At(name).bytes = bytes;
    ChangeSettings();
}

} // namespace KxSim
